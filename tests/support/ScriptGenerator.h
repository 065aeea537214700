// Random scripts of what hosts do with the effect, for any two implementations to be driven by and
// compared.
#pragma once

#include "tests/support/Signal.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// Where the four channels of a block lie in one stretch of memory, as indices of their first
// samples. They may overlap in any way.
struct BlockLayout {
    std::size_t inputs[2];
    std::size_t outputs[2];
    std::size_t size; // samples, at least one past the last channel
};

struct ScriptStep {
    enum class Kind {
        kSetParameter,
        kSetProgram,
        kResume,
        kSuspend,
        kSetSampleRate,
        kSetBlockSize,
        kProcess,
    };

    Kind kind;
    std::int32_t number; // parameter index, program, block size, or frames, which may be negative
    float value;         // of the parameter, or the sample rate in Hz
    BlockLayout layout;  // the rest is of kProcess alone: the memory is filled with `signal` first
    Signal signal;
    std::uint64_t signalSeed;

    std::string text() const; // one line, for reports
};

// The longest block of a script, in frames.
constexpr std::int32_t kLongestScriptBlock = 8192;

// The same script for the same arguments, on every system. About one script in four has numbers far
// outside what hosts send, not-a-numbers and infinities among them. In about one of five, delays
// are longer than the effect's lines, up to 1e10, and rates beyond 32 bits; its blocks end before
// any line does.
std::vector<ScriptStep> generateScript(std::uint64_t seed, std::size_t steps);
