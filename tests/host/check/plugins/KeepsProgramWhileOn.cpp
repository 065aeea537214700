// Takes no other program while it is on.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class KeepsProgramWhileOn : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        if (opcode == effSetProgram && isOn()) {
            return 0;
        }
        return GoodEffect::dispatch(opcode, index, value, ptr, opt);
    }
};

} // namespace

EXPORT_EFFECT(KeepsProgramWhileOn)
