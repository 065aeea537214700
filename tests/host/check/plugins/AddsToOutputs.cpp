// Adds to what stands in its outputs.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class AddsToOutputs : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        for (int c = 0; c < 2; ++c) {
            for (int i = 0; i < frames; ++i) {
                out[c][i] = in[c][i] * gain() + (in[c] == out[c] ? 0.0f : out[c][i]);
            }
        }
    }
};

} // namespace

EXPORT_EFFECT(AddsToOutputs)
