// Going from one end to the other, a parameter takes another along.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class MovesNeighbour : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void setParameter(int index, float value) override {
        if (index == 2 && value == 1.0f && getParameter(2) == 0.0f) {
            GoodEffect::setParameter(1, 0.9f);
        }
        GoodEffect::setParameter(index, value);
    }
};

} // namespace

EXPORT_EFFECT(MovesNeighbour)
