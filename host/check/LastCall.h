// The call that a check's process is in, in memory shared with the process that judges it.
#pragma once

#include "plugin/vst2/AEffect.h"

#include <atomic>
#include <cstdint>
#include <string>

namespace tvhost {

// Written before each call into the plug-in and read once the process has ended, so that a crash
// or a hang names the call. With several threads the latest call of any counts.
struct LastCall {
    enum Kind : std::int32_t {
        kNone,
        kLoad,         // dlopen and the entry
        kDispatch,     // opcode, index, value, opt
        kSetParameter, // index, opt
        kGetParameter, // index
        kProcess,      // value frames
        kUnload,
    };

    std::atomic<std::int32_t> kind{kNone};
    std::atomic<std::int32_t> opcode{0};
    std::atomic<std::int32_t> index{0};
    std::atomic<std::int64_t> value{0};
    std::atomic<float> opt{0.0f};
    char phase[160] = {}; // what the check is about, ends with a zero

    void note(Kind newKind, VstInt32 newOpcode = 0, VstInt32 newIndex = 0,
              std::int64_t newValue = 0, float newOpt = 0.0f);
    void setPhase(const std::string& text);

    // The call and the phase in words.
    std::string text() const;
};

} // namespace tvhost
