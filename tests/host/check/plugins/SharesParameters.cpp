// Keeps one parameter for all its instances.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

std::atomic<float> shared{0.5f};

class SharesParameters : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void setParameter(int index, float value) override {
        if (index == 1) {
            shared = value;
        } else {
            GoodEffect::setParameter(index, value);
        }
    }
    float getParameter(int index) override {
        return index == 1 ? shared.load() : GoodEffect::getParameter(index);
    }
};

} // namespace

EXPORT_EFFECT(SharesParameters)
