// Drops the last parameter unless the first was written before.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class RestoresInOneOrder : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void setParameter(int index, float value) override {
        firstWritten_ = firstWritten_ || index == 0;
        if (index != kParameters - 1 || firstWritten_) {
            GoodEffect::setParameter(index, value);
        }
    }

private:
    bool firstWritten_ = false;
};

} // namespace

EXPORT_EFFECT(RestoresInOneOrder)
