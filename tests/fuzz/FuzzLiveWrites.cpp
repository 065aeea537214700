// Lets another thread write whatever the fuzzer makes up while a block runs, at the samples that it
// chooses, and goes on. What is heard then is the concern of other tests; here no write may lead
// the path out of its memory.
#include "tests/effect/TrappedInput.h"
#include "tests/fuzz/FuzzedEffect.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace {

constexpr int kMostBlocks = 12;
constexpr int kMostWrites = 6;
constexpr std::size_t kMostFrames = 3000; // all blocks together don't come to the lines' end
constexpr float kHighestRate = 192000.0f; // where a delay of 1.0 fills the lines

// Either delays are longer than the lines, whose end no block comes to, or blocks begin shortly
// before the lines' end, and no delay is longer.
float longestDelay = 1.0f;

float anyValue(VstInt32 index, FuzzedDataProvider& data) {
    if (data.ConsumeBool()) {
        return data.ConsumeFloatingPointInRange<float>(0.0f, 1.0f);
    }
    return index == kDelay ? data.ConsumeFloatingPointInRange<float>(-longestDelay, longestDelay)
                           : anyFloat(data);
}

void goShortlyBeforeTheEnd(VstXSynth& effect, FuzzedDataProvider& data) {
    effect.setParameter(kDelay, 1.0f);
    effect.delayPosition = effect.delayLength - data.ConsumeIntegralInRange<std::int64_t>(
                                                    1, static_cast<std::int64_t>(kMostFrames));
}

// Delays of some samples too: the end of a line that is short comes often.
void write(FuzzedEffect& fuzzed, FuzzedDataProvider& data) {
    AEffect* const record = fuzzed.record();
    switch (data.ConsumeIntegralInRange<int>(0, 3)) {
    case 0:
        fuzzed.dispatch(effSetProgram, 0, data.ConsumeIntegralInRange<VstInt32>(-1, 26), nullptr,
                        0.0f);
        break;
    case 1:
        record->setParameter(record, kDelay, data.ConsumeFloatingPointInRange<float>(0.0f, 0.01f));
        break;
    default: {
        const auto index = data.ConsumeIntegralInRange<VstInt32>(0, 8);
        record->setParameter(record, index, anyValue(index, data));
        break;
    }
    }
}

void runBlock(FuzzedEffect& fuzzed, FuzzedDataProvider& data) {
    const auto frames = data.ConsumeIntegralInRange<std::size_t>(1, kMostFrames);
    const auto trap = data.ConsumeIntegralInRange<std::size_t>(0, frames - 1);
    const auto level = data.ConsumeFloatingPointInRange<float>(0.0f, 1.0f);
    const int writes = data.ConsumeIntegralInRange<int>(1, kMostWrites);
    TrappedInput left(frames, trap, [&] {
        for (int i = 0; i < writes; ++i) {
            write(fuzzed, data);
        }
    });
    std::fill_n(left.samples(), frames, level);
    std::vector<float> right(frames, -level);
    std::vector<float> outLeft(frames);
    std::vector<float> outRight(frames);
    float* inputs[2] = {left.samples(), right.data()};
    float* outputs[2] = {outLeft.data(), outRight.data()};
    left.arm();
    fuzzed.record()->processReplacing(fuzzed.record(), inputs, outputs,
                                      static_cast<VstInt32>(frames));
    expect(left.sprung(), "the block never read its input");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    FuzzedDataProvider data(bytes, size);
    FuzzedEffect fuzzed;
    const bool atTheEnd = data.ConsumeBool();
    longestDelay = atTheEnd ? 1.0f : 1e10f;
    fuzzed.dispatch(effSetSampleRate, 0, 0, nullptr,
                    atTheEnd ? kHighestRate
                             : data.ConsumeFloatingPointInRange<float>(1.0f, kHighestRate));
    for (int i = 0; i < kMostWrites; ++i) {
        write(fuzzed, data);
    }
    for (int block = 0; block < kMostBlocks && data.remaining_bytes() > 0; ++block) {
        // The first block makes the filters of the rate, and a position of its own.
        if (atTheEnd && block > 0) {
            goShortlyBeforeTheEnd(fuzzed.effect(), data);
        }
        runBlock(fuzzed, data);
    }
    return 0;
}
