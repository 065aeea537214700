// An instance for fuzzers, which make too many to leave their memory behind.
#pragma once

#include "editor/tveditor13.h"
#include "effect/VstXSynth.h"
#include "plugin/vst2/EffectOpcodes.h"
#include "tests/support/Bits.h"
#include "tests/support/LoadedPlugin.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

// Ends the fuzzer with what was found.
inline void expect(bool holds, const std::string& what) {
    if (!holds) {
        std::fprintf(stderr, "%s\n", what.c_str());
        std::abort();
    }
}

// All its buffers go with it.
class FuzzedEffect {
public:
    FuzzedEffect() : effect_(new VstXSynth(plainHost)) {}
    ~FuzzedEffect() {
        float* const lines[] = {effect_->delayBufferLeft, effect_->delayBufferRight};
        FourPoleFilter* const filters[] = {effect_->lowPassLeft, effect_->lowPassRight,
                                           effect_->highPassLeft, effect_->highPassRight};
        double* const table = effect_->sineTable;
        DelayProgram* const programs = effect_->programs;
        expect(dispatch(effClose, 0, 0, nullptr, 0.0f) == 1, "closing didn't answer 1");
        for (float* line : lines) {
            delete[] line;
        }
        for (FourPoleFilter* filter : filters) {
            delete filter;
        }
        delete[] table;
        delete[] programs;
    }
    FuzzedEffect(const FuzzedEffect&) = delete;
    FuzzedEffect& operator=(const FuzzedEffect&) = delete;

    VstXSynth& effect() { return *effect_; }
    AEffect* record() { return effect_->getAeffect(); }
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr, float opt) {
        return record()->dispatcher(record(), opcode, index, value, ptr, opt);
    }

private:
    VstXSynth* effect_; // ended by its record
};

inline float anyFloat(FuzzedDataProvider& data) {
    return floatOf(data.ConsumeIntegral<std::uint32_t>());
}
