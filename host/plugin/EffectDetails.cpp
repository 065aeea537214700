#include "host/plugin/EffectDetails.h"

#include "host/base/PlainText.h"
#include "host/plugin/EffectDescription.h"

#include <cstring>

namespace tvhost {

namespace {

using nlohmann::ordered_json;

enum ParameterFlag : VstInt32 {
    kIsSwitch = 1 << 0,
    kHasIntegerRange = 1 << 1,
    kHasFloatStep = 1 << 2,
    kHasIntegerStep = 1 << 3,
    kHasPlace = 1 << 4,
    kHasCategory = 1 << 5,
    kCanRamp = 1 << 6,
};

constexpr const char* kAbilities[] = {
    "sendVstEvents",      "sendVstMidiEvent", "receiveVstEvents", "receiveVstMidiEvent",
    "receiveVstTimeInfo", "offline",          "midiProgramNames", "bypass",
};

// A text that may fill its place to the last character.
template <std::size_t kSize>
std::string textIn(const char (&place)[kSize]) {
    return plainText(std::string_view(place, strnlen(place, kSize)));
}

} // namespace

ordered_json describePins(const EffectInstance& effect, EffectInstance::Side side, int count) {
    ordered_json pins = ordered_json::array();
    for (int i = 0; i < count; ++i) {
        ordered_json pin = {{"index", i}};
        if (const auto told = effect.pin(side, i)) {
            pin["label"] = textIn(told->label);
            pin["shortLabel"] = textIn(told->shortLabel);
            pin["active"] = (told->flags & kVstPinIsActive) != 0;
            pin["stereo"] = (told->flags & kVstPinIsStereo) != 0;
            if ((told->flags & kVstPinUseSpeaker) != 0) {
                pin["arrangement"] = told->arrangementType;
            }
        }
        pins.push_back(pin);
    }
    return pins;
}

ordered_json describeAbilities(const EffectInstance& effect) {
    ordered_json abilities = ordered_json::object();
    for (const char* const word : kAbilities) {
        const std::int32_t answer = effect.canDo(word);
        abilities[word] = answer == 0 ? ordered_json() : ordered_json(answer > 0);
    }
    return abilities;
}

ordered_json describeProperties(const EffectInstance& effect, int parameter) {
    const auto told = effect.parameterProperties(parameter);
    if (!told) {
        return nullptr;
    }
    ordered_json properties = {{"label", textIn(told->label)},
                               {"shortLabel", textIn(told->shortLabel)},
                               {"isSwitch", (told->flags & kIsSwitch) != 0},
                               {"canRamp", (told->flags & kCanRamp) != 0}};
    if ((told->flags & kHasFloatStep) != 0) {
        properties["step"] = jsonValue(told->stepFloat);
        properties["smallStep"] = jsonValue(told->smallStepFloat);
        properties["largeStep"] = jsonValue(told->largeStepFloat);
    }
    if ((told->flags & kHasIntegerRange) != 0) {
        properties["minInteger"] = told->minInteger;
        properties["maxInteger"] = told->maxInteger;
    }
    if ((told->flags & kHasIntegerStep) != 0) {
        properties["stepInteger"] = told->stepInteger;
        properties["largeStepInteger"] = told->largeStepInteger;
    }
    if ((told->flags & kHasPlace) != 0) {
        properties["displayIndex"] = told->displayIndex;
    }
    if ((told->flags & kHasCategory) != 0) {
        properties["category"] = told->category;
        properties["categoryLabel"] = textIn(told->categoryLabel);
        properties["parametersInCategory"] = told->numParametersInCategory;
    }
    return properties;
}

} // namespace tvhost
