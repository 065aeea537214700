// Loads its programs from stock at each visit, and keeps no chunks.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class ForgetsEdits : public GoodEffect {
public:
    explicit ForgetsEdits(audioMasterCallback master) : GoodEffect(master) {
        record.flags &= ~effFlagsProgramChunks;
    }

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        if (opcode == effSetProgram && value >= 0 && value < kPrograms) {
            GoodEffect::dispatch(opcode, index, value, ptr, opt);
            setParameter(3, 0.5f);
            return 0;
        }
        return GoodEffect::dispatch(opcode, index, value, ptr, opt);
    }
};

} // namespace

EXPORT_EFFECT(ForgetsEdits)
