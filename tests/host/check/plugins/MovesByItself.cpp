// Moves a parameter after some time.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class MovesByItself : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        GoodEffect::process(in, out, frames);
        done_ += frames;
        if (done_ > 30000) {
            parameterValue(2) = 0.33f;
        }
    }

private:
    int done_ = 0;
};

} // namespace

EXPORT_EFFECT(MovesByItself)
