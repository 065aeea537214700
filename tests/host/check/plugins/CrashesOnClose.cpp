// Crashes when the twentieth that was never switched on is closed.
#include "tests/host/check/plugins/GoodEffect.h"

#include <cstdlib>

namespace {

int closed = 0;

class CrashesOnClose : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        wasOn = wasOn || (opcode == effMainsChanged && value != 0);
        if (opcode == effClose && !wasOn && ++closed == 20) {
            std::abort();
        }
        return GoodEffect::dispatch(opcode, index, value, ptr, opt);
    }

private:
    bool wasOn = false;
};

} // namespace

EXPORT_EFFECT(CrashesOnClose)
