// Drives an instance by whatever the fuzzer makes up, within what the interface allows, and holds
// it against the model at each step.
#include "plugin/vst2/EffectOpcodes.h"
#include "tests/effect/EffectState.h"
#include "tests/fuzz/FuzzedEffect.h"
#include "tests/support/Bits.h"
#include "tests/support/ReferenceDelay.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kMostFrames = 300;
constexpr int kMostSteps = 40;
// Longer than the lines are; the frames of all steps together don't come to their end.
constexpr float kLongestDelay = 1e10f;
constexpr float kHighestRate = 4e9f; // Hz, beyond 32 bits

void writeParameter(FuzzedEffect& fuzzed, ReferenceDelay& model, FuzzedDataProvider& data) {
    const auto index = data.ConsumeIntegralInRange<VstInt32>(-2, 10);
    const bool usual = data.ConsumeBool();
    const float value = usual ? data.ConsumeFloatingPointInRange<float>(-1.0f, 1.0f)
                        : index == kDelay
                            ? data.ConsumeFloatingPointInRange<float>(-kLongestDelay, kLongestDelay)
                            : anyFloat(data);
    fuzzed.record()->setParameter(fuzzed.record(), index, value);
    model.setParameter(index, value);
}

void processBlock(FuzzedEffect& fuzzed, ReferenceDelay& model, FuzzedDataProvider& data) {
    const auto frames =
        data.ConsumeIntegralInRange<std::int32_t>(-1, static_cast<std::int32_t>(kMostFrames));
    const auto count = static_cast<std::size_t>(std::max(frames, 1));
    std::size_t places[4];
    for (std::size_t& place : places) {
        place = data.ConsumeIntegralInRange<std::size_t>(0, 3 * count);
    }
    std::vector<float> own(4 * count);
    for (float& sample : own) {
        sample = data.remaining_bytes() > 0 && data.ConsumeBool()
                     ? anyFloat(data)
                     : data.ConsumeFloatingPointInRange<float>(-1.0f, 1.0f);
    }
    std::vector<float> expected = own;
    float* ownIn[2] = {&own[places[0]], &own[places[1]]};
    float* ownOut[2] = {&own[places[2]], &own[places[3]]};
    float* expectedIn[2] = {&expected[places[0]], &expected[places[1]]};
    float* expectedOut[2] = {&expected[places[2]], &expected[places[3]]};
    fuzzed.record()->processReplacing(fuzzed.record(), ownIn, ownOut, frames);
    model.process(expectedIn, expectedOut, frames);
    expect(firstDifference(own.data(), expected.data(), own.size()) < 0, "the samples differ");
}

// Any opcode that changes nothing which the model doesn't know of.
void askAnything(FuzzedEffect& fuzzed, ReferenceDelay& model, FuzzedDataProvider& data) {
    const auto opcode = data.ConsumeIntegralInRange<VstInt32>(-3, 100);
    const auto index = data.ConsumeIntegral<VstInt32>();
    auto value = data.ConsumeIntegral<VstIntPtr>();
    const float opt = anyFloat(data);
    alignas(16) char memory[4096] = "a name of more than twenty-four characters";
    void* ptr = memory;
    void* places[2] = {};
    switch (opcode) {
    case effClose:          // ends the instance
    case effSetSampleRate:  // below, for the model as well
    case effSetProgram:     // the same
    case effMainsChanged:   // the same
    case effSetProgramName: // the same
        return;
    case effEditOpen:
        ptr = nullptr;
        break;
    case effGetProgramNameIndexed:
        fuzzed.dispatch(opcode, std::max(index, 0), value, ptr, opt);
        return;
    case effGetSpeakerArrangement:
        value = reinterpret_cast<VstIntPtr>(&places[0]);
        ptr = &places[1];
        break;
    default:
        break;
    }
    fuzzed.dispatch(opcode, index, value, ptr, opt);
}

void setProgramAndName(FuzzedEffect& fuzzed, ReferenceDelay& model, FuzzedDataProvider& data) {
    const auto program = data.ConsumeIntegral<VstInt32>() % 30;
    fuzzed.dispatch(effSetProgram, 0, program, nullptr, 0.0f);
    model.setProgram(program);
    if (data.ConsumeBool()) {
        std::string name = data.ConsumeRandomLengthString(40);
        fuzzed.dispatch(effSetProgramName, 0, 0, name.data(), 0.0f);
        name = name.c_str();
        model.programs[static_cast<std::size_t>(model.curProgram)].name = name.substr(0, 24);
    }
}

void setRateOrResume(FuzzedEffect& fuzzed, ReferenceDelay& model, FuzzedDataProvider& data) {
    if (data.ConsumeBool()) {
        const float highest = data.ConsumeBool() ? 192000.0f : kHighestRate;
        const auto rate = data.ConsumeFloatingPointInRange<float>(-highest, highest);
        fuzzed.dispatch(effSetSampleRate, 0, 0, nullptr, rate);
        model.setSampleRate(rate);
    } else {
        const auto value = data.ConsumeIntegral<VstIntPtr>();
        fuzzed.dispatch(effMainsChanged, 0, value, nullptr, 0.0f);
        if (value != 0) {
            model.resume();
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    FuzzedDataProvider data(bytes, size);
    FuzzedEffect fuzzed;
    ReferenceDelay model;
    for (int step = 0; step < kMostSteps && data.remaining_bytes() > 0; ++step) {
        switch (data.ConsumeIntegralInRange<int>(0, 5)) {
        case 0:
            writeParameter(fuzzed, model, data);
            break;
        case 1:
            askAnything(fuzzed, model, data);
            break;
        case 2:
            setProgramAndName(fuzzed, model, data);
            break;
        case 3:
            setRateOrResume(fuzzed, model, data);
            break;
        default:
            processBlock(fuzzed, model, data);
            break;
        }
        const std::string difference = stateDifference(fuzzed.effect(), model);
        expect(difference.empty(), difference);
    }
    return 0;
}
