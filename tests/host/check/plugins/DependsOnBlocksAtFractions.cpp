// Loses the rest of a sample at the end of each block, where the rate has one.
#include "tests/host/check/plugins/GoodEffect.h"

#include <cmath>

namespace {

class DependsOnBlocksAtFractions : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        GoodEffect::process(in, out, frames);
        if (sampleRate != std::floor(sampleRate)) {
            out[0][frames - 1] = 0.0f;
        }
    }
};

} // namespace

EXPORT_EFFECT(DependsOnBlocksAtFractions)
