// Fades in at the begin of each block.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class DependsOnBlocks : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        GoodEffect::process(in, out, frames);
        for (int i = 0; i < frames; ++i) {
            out[0][i] *= 0.5f + 0.5f * static_cast<float>(i) / static_cast<float>(frames);
        }
    }
};

} // namespace

EXPORT_EFFECT(DependsOnBlocks)
