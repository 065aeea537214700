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
        wasOn_ = wasOn_ || (opcode == effMainsChanged && value != 0);
        if (opcode == effClose && !wasOn_ && ++closed == 20) {
            std::abort();
        }
        return GoodEffect::dispatch(opcode, index, value, ptr, opt);
    }

private:
    bool wasOn_ = false;
};

} // namespace

EXPORT_EFFECT(CrashesOnClose)
