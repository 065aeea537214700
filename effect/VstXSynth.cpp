// Life of the effect; its other sides are in Parameters.cpp, Programs.cpp, SignalPath.cpp,
// EditorLink.cpp and Identity.cpp.
#include "effect/VstXSynth.h"

#include "plugin/Truncation.h"

#include <cmath>
#include <cstring>

namespace {

// Pi over 180 with the digits of pi cut after 3.14159265358; the table's values hang on it.
constexpr double kRadiansPerDegree = 0x1.1df46a2525ff7p-6;
constexpr double kSineStep = 0.001; // degrees

FourPoleFilter* makeFilter(VstInt32 lowFrequency, VstInt32 highFrequency, float sampleRate,
                           double lowGain, double midGain, double highGain) {
    auto* const filter = new FourPoleFilter;
    init(filter, lowFrequency, highFrequency, truncateToInt32(sampleRate));
    filter->lowGain = lowGain;
    filter->midGain = midGain;
    filter->highGain = highGain;
    return filter;
}

} // namespace

VstXSynth::VstXSynth(audioMasterCallback host)
    : AudioEffectX(host, kNumPrograms, kNumParams),
      DelayFields() { // all bytes zero: those between the fields are watched with them
    lastSampleRate = truncateToInt64(sampleRate);
    delayLength = 0;
    spareLength = 44100;
    sparePosition = 0;
    delayPosition = 0;
    sineIndex = 0;
    sweepPhase = 0.0;

    delayBufferLeft = new float[kDelayCapacity];
    delayBufferRight = new float[kDelayCapacity];

    editorUpdateHold = false;
    delayTime = 0.0799773261f;
    feedBack = 0.215f;
    lowPass = 0.374;
    highPass = 0.655999;
    highPassType = false;
    lowPassType = true;
    panDepth = 0.0;
    leftRight = 0.5;
    mix = 1.0;
    panSide = false;
    spareGain = 1.0f;
    spareOffset = 0.0f;

    makeLowPassPair();
    makeHighPassPair();

    sineTable = new double[kSineTableSize];
    fillSineTable();

    programs = new DelayProgram[kNumPrograms];
    fillFactoryPrograms(programs);
    setProgram(0);

    setNumInputs(2);
    setNumOutputs(2);
    setUniqueID(packFourCharacters('T', 'v', 'D', 'y'));

    resume();

    makeEditor();
}

VstXSynth::~VstXSynth() = default;

void VstXSynth::resume() {
    clearDelayLines();
    AudioEffectX::resume();
}

void VstXSynth::makeLowPassPair() {
    const float rate = getSampleRate();
    lowPassLeft = makeFilter(600, 1800, rate, 1.0, 0.0, 0.0);
    lowPassRight = makeFilter(600, 1800, rate, 1.0, 0.0, 0.0);
}

void VstXSynth::makeHighPassPair() {
    const float rate = getSampleRate();
    highPassLeft = makeFilter(6000, 18500, rate, 0.0, 1.0, 1.0);
    highPassRight = makeFilter(6000, 18500, rate, 0.0, 1.0, 1.0);
}

void VstXSynth::fillSineTable() {
    // The angle is rounded to single precision at each step, which stretches the steps so that the
    // table ends at half a period.
    float angle = 0.0f;
    for (std::int64_t i = 0; i < kSineTableSize; ++i) {
        sineTable[i] = std::sin(static_cast<double>(angle) * kRadiansPerDegree);
        angle = static_cast<float>(static_cast<double>(angle) + kSineStep);
    }
}

void VstXSynth::clearDelayLines() {
    clearing_.begin();
    constexpr std::size_t kBytes = sizeof(float) * static_cast<std::size_t>(kDelayCapacity);
    if (delayBufferLeft != nullptr) {
        std::memset(delayBufferLeft, 0, kBytes);
    }
    if (delayBufferRight != nullptr) {
        std::memset(delayBufferRight, 0, kBytes);
    }
    clearing_.end();
}
