// Knows whole rates only.
#include "tests/host/check/plugins/GoodEffect.h"

#include <algorithm>
#include <cmath>

namespace {

class SilentAtFractions : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        GoodEffect::process(in, out, frames);
        if (sampleRate != std::floor(sampleRate)) {
            std::fill_n(out[0], frames, 0.0f);
            std::fill_n(out[1], frames, 0.0f);
        }
    }
};

} // namespace

EXPORT_EFFECT(SilentAtFractions)
