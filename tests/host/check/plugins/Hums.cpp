// Hums softly all the time.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class Hums : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        GoodEffect::process(in, out, frames);
        for (int i = 0; i < frames; ++i) {
            sign_ = -sign_;
            out[0][i] += sign_ * 5e-5f;
        }
    }

private:
    float sign_ = 1.0f;
};

} // namespace

EXPORT_EFFECT(Hums)
