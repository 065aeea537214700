// Calls the system in each block.
#include "tests/host/check/plugins/GoodEffect.h"

#include <unistd.h>

namespace {

class CallsSystemInBlock : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        parent_ = getppid();
        GoodEffect::process(in, out, frames);
    }

private:
    volatile pid_t parent_ = 0;
};

} // namespace

EXPORT_EFFECT(CallsSystemInBlock)
