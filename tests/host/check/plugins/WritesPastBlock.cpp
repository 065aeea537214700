// Writes one frame too many now and then.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class WritesPastBlock : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        GoodEffect::process(in, out, frames);
        if (frames % 3 == 0) {
            out[1][frames] = 0.0f;
        }
    }
};

} // namespace

EXPORT_EFFECT(WritesPastBlock)
