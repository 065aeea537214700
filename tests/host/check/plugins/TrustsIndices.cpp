// Trusts that hosts know its parameters.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class TrustsIndices : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    float getParameter(int index) override {
        static_cast<void>(reads_.at(static_cast<std::size_t>(index)));
        return GoodEffect::getParameter(index);
    }

private:
    std::array<int, kParameters> reads_{};
};

} // namespace

EXPORT_EFFECT(TrustsIndices)
