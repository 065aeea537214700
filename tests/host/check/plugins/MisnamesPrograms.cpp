// Lists another name for each program than it goes by.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class MisnamesPrograms : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        if (opcode == effGetProgramNameIndexed && index >= 0 && index < kPrograms) {
            return give(ptr, "Listed " + std::to_string(index));
        }
        return GoodEffect::dispatch(opcode, index, value, ptr, opt);
    }
};

} // namespace

EXPORT_EFFECT(MisnamesPrograms)
