// VstXSynth's parameters: what each write does, and their names and texts.
#include "effect/VstXSynth.h"

#include "plugin/Truncation.h"
#include "plugin/vst2/EffectOpcodes.h"

#include <cstddef>
#include <cstring>

namespace {

// Not-a-numbers switch off.
bool isSwitchedOn(float value) {
    return value < 0.0f || value > 0.0f;
}

// The whole text with its terminator, also where it is longer than kVstMaxParamStrLen: hosts have
// the room.
template <std::size_t kSize>
void write(char* text, const char (&literal)[kSize]) {
    std::memcpy(text, literal, kSize);
}

} // namespace

void VstXSynth::setDelay(float value) {
    delayTime = value;
    programs[curProgram].delayTime = value;
    lengthFromDelayTime(value);
    clearDelayLines();
}

void VstXSynth::lengthFromDelayTime(float value) {
    delayPosition = 0;
    delayLength = truncateToInt64((getSampleRate() + -1.0f) * value);
    sweep_.prepare(delayLength);
}

void VstXSynth::setParameter(VstInt32 index, float value) {
    DelayProgram& record = programs[curProgram];
    switch (index) {
    case kDelay:
        setDelay(value);
        break;
    case kFeedBack:
        record.feedBack = value;
        feedBack = value;
        break;
    case kLowPass: {
        const double depth = static_cast<double>(value);
        record.lowPass = depth;
        lowPass = depth;
        const double gain = 1.0 - depth;
        lowPassLeft->midGain = gain;
        lowPassLeft->highGain = gain;
        lowPassRight->midGain = gain;
        lowPassRight->highGain = gain;
        break;
    }
    case kHighPass: {
        const double depth = static_cast<double>(value);
        record.highPass = depth;
        highPass = depth;
        const double gain = 1.0 - depth;
        highPassLeft->lowGain = gain;
        highPassRight->lowGain = gain;
        [[fallthrough]]; // a high-pass draws the low-pass into the loop with it
    }
    case kLowPassType: {
        const bool inside = isSwitchedOn(value);
        record.lowPassType = inside;
        lowPassType = inside;
        break;
    }
    case kHighPassType: {
        const bool inside = isSwitchedOn(value);
        record.highPassType = inside;
        highPassType = inside;
        break;
    }
    case kLeftRight:
        record.leftRight = static_cast<double>(value);
        leftRight = static_cast<double>(value);
        break;
    case kPanDepth:
        record.panDepth = static_cast<double>(value);
        panDepth = static_cast<double>(value);
        break;
    case kMix:
        record.mix = static_cast<double>(value);
        mix = static_cast<double>(value);
        break;
    default:
        break;
    }
    notifyEditor(index, value);
}

float VstXSynth::getParameter(VstInt32 index) {
    switch (index) {
    case kDelay:
        return delayTime;
    case kFeedBack:
        return feedBack;
    case kLowPass:
        return static_cast<float>(lowPass);
    case kHighPass:
        return static_cast<float>(highPass);
    case kLowPassType:
        return lowPassType ? 1.0f : 0.0f;
    case kHighPassType:
        return highPassType ? 1.0f : 0.0f;
    case kLeftRight:
        return static_cast<float>(leftRight);
    case kPanDepth:
        return static_cast<float>(panDepth);
    case kMix:
        return static_cast<float>(mix);
    default:
        return 0.0f;
    }
}

void VstXSynth::getParameterName(VstInt32 index, char* text) {
    switch (index) {
    case kDelay:
        write(text, "Delay");
        break;
    case kFeedBack:
        write(text, "FeedBack");
        break;
    case kLowPass:
        write(text, "lowPass");
        break;
    case kHighPass:
        write(text, "highPass");
        break;
    case kLowPassType:
        write(text, "lowPass Type");
        break;
    case kHighPassType:
        write(text, "highPass Type");
        break;
    case kLeftRight:
        write(text, "Left/Right");
        break;
    case kPanDepth:
        write(text, "Pan Depth");
        break;
    case kMix:
        write(text, "MIX");
        break;
    default:
        break;
    }
}

void VstXSynth::getParameterLabel(VstInt32 index, char* label) {
    switch (index) {
    case kDelay:
        write(label, "samples");
        break;
    case kFeedBack:
        write(label, "amount");
        break;
    case kLowPassType:
    case kHighPassType:
        write(label, "on/off");
        break;
    case kLeftRight:
        write(label, "left/right");
        break;
    case kLowPass:
    case kHighPass:
    case kPanDepth:
    case kMix:
        write(label, "%");
        break;
    default:
        break;
    }
}

void VstXSynth::getParameterDisplay(VstInt32 index, char* text) {
    switch (index) {
    case kDelay:
        int2string(static_cast<VstInt32>(delayLength), text, kVstMaxParamStrLen);
        break;
    case kLowPassType:
        int2string(lowPassType ? 1 : 0, text, kVstMaxParamStrLen);
        break;
    case kHighPassType:
        int2string(highPassType ? 1 : 0, text, kVstMaxParamStrLen);
        break;
    case kFeedBack:
    case kLowPass:
    case kHighPass:
    case kLeftRight:
    case kPanDepth:
    case kMix:
        float2string(getParameter(index), text, kVstMaxParamStrLen);
        break;
    default:
        break;
    }
}
