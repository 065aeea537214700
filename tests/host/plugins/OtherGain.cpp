// Another plug-in than Gain that goes by the same name.
#include "tests/host/plugins/TestEffect.h"

namespace {

class OtherGain : public TestEffect {
public:
    explicit OtherGain(audioMasterCallback master) : TestEffect(master, 2, 2, 0, 0) {
        record.uniqueID = packFourCharacters('T', 's', 't', '2');
    }

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        return opcode == effGetEffectName ? give(ptr, "Gain")
                                          : TestEffect::dispatch(opcode, index, value, ptr, opt);
    }
};

} // namespace

EXPORT_EFFECT(OtherGain)
