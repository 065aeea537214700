// Answers whatever the interface lets a host ask about pins, parameters and abilities. Crashes when
// asked for its editor's size if TALKATIVE_EDITOR is set.
#include "tests/host/plugins/TestEffect.h"

#include "plugin/vst2/AEffect.h"
#include "plugin/vst2/Records.h"

#include <cstdlib>

namespace {

struct Rectangle {
    VstInt16 top, left, bottom, right;
};

class Talkative : public TestEffect {
public:
    explicit Talkative(audioMasterCallback master) : TestEffect(master, 3, 2, 3, 0) {
        record.flags |= effFlagsHasEditor;
    }

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        switch (opcode) {
        case effGetEffectName:
            return give(ptr, "Talkative");
        case effGetInputProperties:
            return tellPin(index, *static_cast<VstPinProperties*>(ptr));
        case effGetParameterProperties:
            return tellParameter(index, *static_cast<VstParameterProperties*>(ptr));
        case effCanDo:
            return std::string(static_cast<char*>(ptr)) == "bypass"    ? 1
                   : std::string(static_cast<char*>(ptr)) == "offline" ? -1
                                                                       : 0;
        case effGetNumMidiInputChannels:
            return 16;
        case effGetNumMidiOutputChannels:
            return 3;
        case effEditGetRect:
            if (std::getenv("TALKATIVE_EDITOR")) {
                std::abort();
            }
            *static_cast<Rectangle**>(ptr) = &rectangle_;
            return 1;
        default:
            return TestEffect::dispatch(opcode, index, value, ptr, opt);
        }
    }

private:
    static int tellPin(int index, VstPinProperties& pin) {
        if (index == 0) {
            std::strcpy(pin.label, "Main Left");
            std::memcpy(pin.shortLabel, "MainLeft", 8);
            pin.flags = kVstPinIsActive | kVstPinIsStereo;
        } else if (index == 2) {
            std::strcpy(pin.label, "Side Chain");
            std::strcpy(pin.shortLabel, "SC");
            pin.flags = kVstPinUseSpeaker;
            pin.arrangementType = -2;
        }
        return index == 1 ? 0 : 1;
    }
    static int tellParameter(int index, VstParameterProperties& told) {
        if (index == 0) {
            std::strcpy(told.label, "Switch");
            std::strcpy(told.shortLabel, "Sw");
            told.flags = 1 | 2 | 8;
            told.minInteger = -3;
            told.maxInteger = 4;
            told.stepInteger = 2;
            told.largeStepInteger = 5;
        } else if (index == 1) {
            std::strcpy(told.label, "Level");
            told.flags = 4 | 16 | 32 | 64;
            told.stepFloat = 0.1f;
            told.smallStepFloat = 0.01f;
            told.largeStepFloat = 0.5f;
            told.displayIndex = 7;
            told.category = 1;
            told.numParametersInCategory = 2;
            std::strcpy(told.categoryLabel, "Output");
        }
        return index == 2 ? 0 : 1;
    }

    Rectangle rectangle_{0, 0, 200, 300};
};

} // namespace

EXPORT_EFFECT(Talkative)
