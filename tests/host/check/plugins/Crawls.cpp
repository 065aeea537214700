// Fades out so slowly that it ends among denormal numbers and stays there.
#include "tests/host/check/plugins/GoodEffect.h"

#include <cmath>

namespace {

class Crawls : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        GoodEffect::process(in, out, frames);
        for (int i = 0; i < frames; ++i) {
            state_ = 0.9995f * state_ + 1e-4f * in[0][i];
            state_ = std::isfinite(state_) ? state_ : 0.0f;
            out[1][i] += 1e-3f * state_;
        }
    }

private:
    float state_ = 0.0f;
};

} // namespace

EXPORT_EFFECT(Crawls)
