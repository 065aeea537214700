// Changes the folder that the process works in.
#include "tests/host/check/plugins/GoodEffect.h"

#include <unistd.h>

namespace {

class ChangesFolder : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        if (opcode == effOpen && chdir("/") != 0) {
            return 0;
        }
        return GoodEffect::dispatch(opcode, index, value, ptr, opt);
    }
};

} // namespace

EXPORT_EFFECT(ChangesFolder)
