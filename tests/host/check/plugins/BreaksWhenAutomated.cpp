// Gives no numbers once it was written too often while it is on.
#include "tests/host/check/plugins/GoodEffect.h"

#include <limits>

namespace {

class BreaksWhenAutomated : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void setParameter(int index, float value) override {
        writes_ += isOn() ? 1 : 0;
        GoodEffect::setParameter(index, value);
    }
    void process(float** in, float** out, int frames) override {
        GoodEffect::process(in, out, frames);
        if (writes_ > 300) {
            out[0][0] = std::numeric_limits<float>::quiet_NaN();
        }
    }

private:
    int writes_ = 0;
};

} // namespace

EXPORT_EFFECT(BreaksWhenAutomated)
