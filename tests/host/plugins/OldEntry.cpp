// Exports its entry as main, as plug-ins of the interface's first years do.
#include "tests/host/plugins/TestEffect.h"

namespace {

class OldEntry : public TestEffect {
public:
    explicit OldEntry(audioMasterCallback master) : TestEffect(master, 2, 2, 0, 0) {}

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        return opcode == effGetEffectName ? give(ptr, "Old Entry")
                                          : TestEffect::dispatch(opcode, index, value, ptr, opt);
    }
};

} // namespace

// No function of C++ may be called main but the program's own.
extern "C" __attribute__((visibility("default"))) AEffect*
oldEntry(audioMasterCallback host) __asm__("main");
AEffect* oldEntry(audioMasterCallback host) {
    return &(new OldEntry(host))->record;
}
