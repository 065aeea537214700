// Takes a lock in each block.
#include "tests/host/check/plugins/GoodEffect.h"

#include <mutex>

namespace {

class LocksInBlock : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        const std::lock_guard<std::mutex> guard(lock_);
        GoodEffect::process(in, out, frames);
    }

private:
    std::mutex lock_;
};

} // namespace

EXPORT_EFFECT(LocksInBlock)
