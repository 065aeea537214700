// Has a product name of 70 characters.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class TooLongText : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        if (opcode == effGetProductString) {
            return give(ptr, std::string(70, 'G'));
        }
        return GoodEffect::dispatch(opcode, index, value, ptr, opt);
    }
};

} // namespace

EXPORT_EFFECT(TooLongText)
