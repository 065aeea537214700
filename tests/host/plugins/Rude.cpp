// Writes far more text than the interface allows, with line breaks and bytes that are no
// characters, calls two parameters by one name and values one with what is no number.
#include "tests/host/plugins/TestEffect.h"

#include <limits>

namespace {

class Rude : public TestEffect {
public:
    explicit Rude(audioMasterCallback master) : TestEffect(master, 2, 2, 3, 1) {
        record.uniqueID = packFourCharacters('\xFF', '\n', 'a', 'b');
    }

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        switch (opcode) {
        case effGetEffectName:
            return give(ptr, "Rude\nEffect \xFF\x1B[31m");
        case effGetParamName:
            return give(ptr, index < 2 ? "Twin" : std::string(1000, 'n'));
        case effGetParamLabel:
            return give(ptr, std::string(200, 'l'));
        case effGetProgramNameIndexed:
            std::memset(ptr, 'p', 3000);
            return 1;
        default:
            return TestEffect::dispatch(opcode, index, value, ptr, opt);
        }
    }
    float getParameter(int index) override {
        return index == 0 ? std::numeric_limits<float>::quiet_NaN() : 0.5f;
    }
};

} // namespace

EXPORT_EFFECT(Rude)
