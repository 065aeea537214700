// Crashes on a call that few hosts make.
#include "tests/host/check/plugins/GoodEffect.h"

#include <cstdlib>

namespace {

class CrashesOnOddCall : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        if (opcode == effCopyProgram) {
            std::abort();
        }
        return GoodEffect::dispatch(opcode, index, value, ptr, opt);
    }
};

} // namespace

EXPORT_EFFECT(CrashesOnOddCall)
