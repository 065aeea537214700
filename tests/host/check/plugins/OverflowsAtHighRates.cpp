// Has room for 340000 samples, and a parameter up to a second.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class OverflowsAtHighRates : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        const float length = getParameter(0) * (sampleRate - 1.0f);
        line_.at(static_cast<std::size_t>(length)) = 0.0f;
        GoodEffect::process(in, out, frames);
    }

private:
    std::vector<float> line_ = std::vector<float>(340000);
};

} // namespace

EXPORT_EFFECT(OverflowsAtHighRates)
