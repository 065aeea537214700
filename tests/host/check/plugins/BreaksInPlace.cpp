// Exchanges its channels, and reads the second after the first was written.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class BreaksInPlace : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        for (int i = 0; i < frames; ++i) {
            out[0][i] = in[1][i] * gain();
            out[1][i] = in[0][i] * gain();
        }
    }
};

} // namespace

EXPORT_EFFECT(BreaksInPlace)
