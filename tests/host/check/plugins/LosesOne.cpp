// Keeps a written 1 as 0.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class LosesOne : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void setParameter(int index, float value) override {
        GoodEffect::setParameter(index, index == 2 && value == 1.0f ? 0.0f : value);
    }
};

} // namespace

EXPORT_EFFECT(LosesOne)
