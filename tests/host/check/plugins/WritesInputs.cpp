// Works in the memory of its inputs.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class WritesInputs : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        GoodEffect::process(in, out, frames);
        if (in[0] != out[0]) {
            in[0][frames / 2] *= 0.5f;
        }
    }
};

} // namespace

EXPORT_EFFECT(WritesInputs)
