// Writes the vendor's name without a zero at its end.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class UnendedText : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        if (opcode == effGetVendorString) {
            std::memcpy(ptr, "Tests", 5);
            return 1;
        }
        return GoodEffect::dispatch(opcode, index, value, ptr, opt);
    }
};

} // namespace

EXPORT_EFFECT(UnendedText)
