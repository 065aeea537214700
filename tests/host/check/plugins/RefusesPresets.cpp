// Takes the presets of an older version alone.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class RefusesPresets : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        if (opcode == effBeginLoadProgram) {
            return -1;
        }
        return GoodEffect::dispatch(opcode, index, value, ptr, opt);
    }
};

} // namespace

EXPORT_EFFECT(RefusesPresets)
