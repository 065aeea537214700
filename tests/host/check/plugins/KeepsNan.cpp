// Never forgets what came in.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class KeepsNan : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        for (int i = 0; i < frames; ++i) {
            state_ = 0.5f * state_ + in[0][i];
        }
        GoodEffect::process(in, out, frames);
        for (int i = 0; i < frames; ++i) {
            out[0][i] += 0.0f * state_;
        }
    }

private:
    float state_ = 0.0f;
};

} // namespace

EXPORT_EFFECT(KeepsNan)
