// Takes the root of what may be negative when sound is loud.
#include "tests/host/check/plugins/GoodEffect.h"

#include <cmath>

namespace {

class LoudNan : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        GoodEffect::process(in, out, frames);
        for (int i = 0; i < frames; ++i) {
            out[0][i] += 0.0f * std::sqrt(9.0f - 4.0f * std::fabs(out[0][i]));
        }
    }
};

} // namespace

EXPORT_EFFECT(LoudNan)
