// VstXSynth's signal path, sample by sample. SubBlockPath.cpp holds the same for many samples at
// once.
#include "effect/Balance.h"
#include "effect/LiveField.h"
#include "effect/VstXSynth.h"
#include "plugin/Truncation.h"

#include <cstdint>

namespace {

// Whether a write at some index of one array is a read or write at another index of the other.
bool partlyOverlap(const float* a, const float* b, VstInt32 frames) {
    const auto first = reinterpret_cast<std::uintptr_t>(a);
    const auto second = reinterpret_cast<std::uintptr_t>(b);
    const std::uintptr_t distance = first < second ? second - first : first - second;
    return distance != 0 && distance < sizeof(float) * static_cast<std::uintptr_t>(frames);
}

float filtered(FourPoleFilter* filter, float tap) {
    return static_cast<float>(tick(filter, static_cast<double>(tap)));
}

} // namespace

void VstXSynth::processReplacing(float** inputs, float** outputs, VstInt32 sampleFrames) {
    if (static_cast<float>(lastSampleRate) != getSampleRate()) {
        followSampleRate();
    }

    StereoBlock block = {inputs[0], inputs[1], outputs[0], outputs[1]};
    updateSweep();

    if (sampleFrames > 0) {
        const bool inOrder = partlyOverlap(block.inLeft, block.outLeft, sampleFrames) ||
                             partlyOverlap(block.inLeft, block.outRight, sampleFrames) ||
                             partlyOverlap(block.inRight, block.outLeft, sampleFrames) ||
                             partlyOverlap(block.inRight, block.outRight, sampleFrames) ||
                             partlyOverlap(block.outLeft, block.outRight, sampleFrames) ||
                             block.outLeft == block.outRight; // the right one stays
        for (VstInt32 done = 0; done < sampleFrames;) {
            VstInt32 count = inOrder ? 0 : processSubBlock(block, sampleFrames - done);
            if (count == 0) {
                processSample(block);
                count = 1;
            }
            block.advance(count);
            done += count;
        }
    }

    lastSampleRate = truncateToInt64(getSampleRate());
}

// The former filters stay allocated.
void VstXSynth::followSampleRate() {
    makeLowPassPair();
    makeHighPassPair();
    setParameter(kLowPass, static_cast<float>(lowPass));
    setParameter(kHighPass, static_cast<float>(highPass));

    programs[curProgram].delayTime = delayTime;
    lengthFromDelayTime(delayTime);
    clearDelayLines();
}

void VstXSynth::updateSweep() {
    const std::int64_t length = readLive(delayLength);
    const std::int64_t position = readLive(delayPosition);
    sweepPhase = length > 0 ? sweepPhaseAt(position, length) : 0.0;
    sineIndex = sineIndexAt(sweepPhase);
}

void VstXSynth::processSample(const StereoBlock& block) {
    const float inLeft = *block.inLeft;
    const float inRight = *block.inRight;
    const std::int64_t position = readLive(delayPosition);
    float tapLeft = delayBufferLeft[position];
    float tapRight = delayBufferRight[position];
    const BalanceGains gains = balanceGains(readLive(leftRight));

    if (readLive(lowPass) > 0.0 && readLive(lowPassType)) {
        tapLeft = filtered(lowPassLeft, tapLeft);
        tapRight = filtered(lowPassRight, tapRight);
    }
    if (readLive(highPass) > 0.0 && readLive(highPassType)) {
        tapLeft = filtered(highPassLeft, tapLeft);
        tapRight = filtered(highPassRight, tapRight);
    }

    updateSweep();
    delayBufferLeft[position] = readLive(feedBack) * tapLeft + inLeft;
    delayBufferRight[position] = readLive(feedBack) * tapRight + inRight;
    if (position + 1 >= readLive(delayLength)) {
        writeLive<std::int64_t>(delayPosition, 0);
        panSide = !panSide;
    } else {
        writeLive(delayPosition, position + 1);
    }

    if (readLive(lowPass) > 0.0 && !readLive(lowPassType)) {
        tapLeft = filtered(lowPassLeft, tapLeft);
        tapRight = filtered(lowPassRight, tapRight);
    }
    if (readLive(highPass) > 0.0 && !readLive(highPassType)) {
        tapLeft = filtered(highPassLeft, tapLeft);
        tapRight = filtered(highPassRight, tapRight);
    }

    // The lines cross here: the right one feeds the left output.
    const float wetLeft = tapRight * gains.toLeft;
    const float wetRight = tapLeft * gains.toRight;
    const double sweep = 1.0 - readLive(panDepth) * sineTable[sineIndex];
    double outLeft = static_cast<double>(wetLeft) * readLive(mix);
    double outRight = static_cast<double>(wetRight) * readLive(mix);
    if (panSide) {
        outLeft *= sweep;
    } else {
        outRight *= sweep;
    }
    *block.outLeft = static_cast<float>(outLeft + static_cast<double>(inLeft));
    *block.outRight = static_cast<float>(outRight + static_cast<double>(inRight));
}
