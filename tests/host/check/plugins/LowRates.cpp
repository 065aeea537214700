// Crashes at the lowest rates.
#include "tests/host/check/plugins/GoodEffect.h"

#include <cstdlib>

namespace {

class LowRates : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        if (sampleRate < 9000.0f) {
            std::abort();
        }
        GoodEffect::process(in, out, frames);
    }
};

} // namespace

EXPORT_EFFECT(LowRates)
