// Goes back to what it was made with when it is switched on.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class ResetsOnStart : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        if (opcode == effMainsChanged && value != 0) {
            setParameter(1, 0.5f);
        }
        return GoodEffect::dispatch(opcode, index, value, ptr, opt);
    }
};

} // namespace

EXPORT_EFFECT(ResetsOnStart)
