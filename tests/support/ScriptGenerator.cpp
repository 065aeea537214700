#include "tests/support/ScriptGenerator.h"

#include "tests/support/Dice.h"

#include <algorithm>
#include <limits>
#include <sstream>

namespace {

using Kind = ScriptStep::Kind;

constexpr std::int32_t kFramesOfLines = 192000;

class Generator {
public:
    explicit Generator(std::uint64_t seed)
        : dice_(seed), hostile_(dice_.oneIn(4)), far_(dice_.oneIn(5)) {}

    ScriptStep next() {
        ScriptStep step{};
        switch (dice_.between(0, 19)) {
        case 0:
            step.kind = Kind::kSetProgram;
            step.number = static_cast<std::int32_t>(dice_.between(-1, 26));
            break;
        case 1:
            step.kind = dice_.oneIn(2) ? Kind::kResume : Kind::kSuspend;
            break;
        case 2:
            step.kind = dice_.oneIn(3) ? Kind::kSetBlockSize : Kind::kSetSampleRate;
            step.number = static_cast<std::int32_t>(dice_.between(0, 8192));
            if (step.kind == Kind::kSetSampleRate) {
                step.value = rate_ = sampleRate();
            }
            break;
        case 3:
        case 4:
        case 5:
        case 6:
        case 7:
        case 8:
            step.kind = Kind::kSetParameter;
            step.number = static_cast<std::int32_t>(dice_.oneIn(20) ? dice_.between(-3, 12)
                                                                    : dice_.between(0, 8));
            step.value = parameter(step.number);
            break;
        default:
            step.kind = Kind::kProcess;
            step.number = frames();
            step.layout = layout(step.number);
            step.signal = signal();
            step.signalSeed = dice_.bits();
            break;
        }
        return step;
    }

private:
    float sampleRate() {
        static constexpr float kUsual[] = {44100.0f, 48000.0f, 88200.0f, 96000.0f, 192000.0f};
        static constexpr float kOdd[] = {44100.5f,  47999.75f, 22050.0f, 8000.0f,
                                         11025.25f, 2.0f,      1.0f,     191999.5f};
        static constexpr float kFar[] = {384000.0f,     1e6f, 2147483520.0f, 2147483648.0f,
                                         4294967296.0f, 4e9f, 0.0f,          -44100.0f};
        if (far_ && dice_.oneIn(3)) {
            return dice_.pick(kFar);
        }
        return dice_.oneIn(3) ? dice_.pick(kOdd) : dice_.pick(kUsual);
    }

    // Above 1.0, which fits at the highest usual rate, in far scripts alone.
    float delay() {
        if (far_ && dice_.oneIn(3)) {
            static constexpr float kLong[] = {1.0001f, 2.0f, 4.36f, 50.0f, 48700.0f, 1e6f, 1e10f};
            return dice_.oneIn(2) ? dice_.pick(kLong) : dice_.within(-1e10f, 1e10f);
        }
        static constexpr std::int64_t kShort[] = {0, 1, 2, 3, 4, 5, 17, 63, 64, 65, 100, 129, 500};
        switch (dice_.between(0, 5)) {
        case 0:
            return 1.0f;
        case 1:
            return dice_.within(-0.5f, 0.0f);
        case 2:
            return dice_.within(0.0f, 1.0f);
        default: {
            const float longest = std::max(rate_ - 1.0f, 1.0f);
            return std::min(1.0f, (static_cast<float>(dice_.pick(kShort)) + 0.5f) / longest);
        }
        }
    }

    float parameter(std::int32_t index) {
        if (index == 0) {
            return delay();
        }
        constexpr float kInfinity = std::numeric_limits<float>::infinity();
        constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();
        if (index == 4 || index == 5) {
            static constexpr float kSwitch[] = {0.0f, 1.0f, -0.0f, 0.5f, -1.0f, 1e-45f};
            return hostile_ && dice_.oneIn(5) ? kNotANumber : dice_.pick(kSwitch);
        }
        if (hostile_ && dice_.oneIn(6)) {
            static constexpr float kStrange[] = {-1.0f, 2.5f, 1e20f, -1e20f, 1e-40f, kInfinity};
            return dice_.pick(kStrange);
        }
        static constexpr float kEnds[] = {0.0f, 1.0f, 0.5f, -0.0f};
        return dice_.oneIn(3) ? dice_.pick(kEnds) : dice_.within(0.0f, 1.0f);
    }

    std::int32_t frames() {
        if (!far_) {
            return anyFrames();
        }
        const std::int32_t number = std::min(anyFrames(), framesLeft_);
        framesLeft_ -= std::max(number, 0);
        return number;
    }

    std::int32_t anyFrames() {
        static constexpr std::int32_t kUsual[] = {
            -1,  0,   1,   2,   3,   4,   5,   7,   16,  31,  32,  63,   64,   65, 127,
            128, 129, 256, 441, 512, 512, 777, 999, 512, 128, 256, 1024, 2048, 64};
        if (dice_.oneIn(40)) {
            return kLongestScriptBlock;
        }
        return dice_.oneIn(4) ? static_cast<std::int32_t>(dice_.between(1, 1500))
                              : dice_.pick(kUsual);
    }

    BlockLayout layout(std::int32_t blockFrames) {
        const auto n = static_cast<std::size_t>(std::max(blockFrames, 1));
        BlockLayout result{{0, n}, {2 * n, 3 * n}, 4 * n};
        switch (dice_.between(0, 7)) {
        case 0:
        case 1: // in place
            result.outputs[0] = result.inputs[0];
            result.outputs[1] = result.inputs[1];
            break;
        case 2: // in place, crossed
            result.outputs[0] = result.inputs[1];
            result.outputs[1] = result.inputs[0];
            break;
        case 3: // one input for both
            result.inputs[1] = result.inputs[0];
            break;
        case 4: // anywhere at all
            for (std::size_t channel = 0; channel < 2; ++channel) {
                result.inputs[channel] = anywhere(3 * n);
                result.outputs[channel] = anywhere(3 * n);
            }
            break;
        case 5: // shifted against each other by a few samples
            for (std::size_t channel = 0; channel < 2; ++channel) {
                result.inputs[channel] = anywhere(std::min<std::size_t>(n, 12));
                result.outputs[channel] = anywhere(std::min<std::size_t>(n, 12));
            }
            break;
        default: // each for itself
            break;
        }
        return result;
    }

    std::size_t anywhere(std::size_t last) {
        return static_cast<std::size_t>(dice_.between(0, static_cast<std::int64_t>(last)));
    }

    Signal signal() {
        static constexpr Signal kTame[] = {Signal::kNoise, Signal::kNoise,   Signal::kImpulses,
                                           Signal::kTone,  Signal::kSilence, Signal::kDenormals};
        static constexpr Signal kHostile[] = {Signal::kLoud, Signal::kHostile};
        return hostile_ && dice_.oneIn(8) ? dice_.pick(kHostile) : dice_.pick(kTame);
    }

    Dice dice_;
    bool hostile_;
    bool far_;
    std::int32_t framesLeft_ = kFramesOfLines; // of a far script
    float rate_ = 44100.0f;
};

} // namespace

std::vector<ScriptStep> generateScript(std::uint64_t seed, std::size_t steps) {
    Generator generator(seed);
    std::vector<ScriptStep> script;
    while (script.size() < steps) {
        script.push_back(generator.next());
    }
    return script;
}

std::string ScriptStep::text() const {
    std::ostringstream out;
    out.precision(9);
    switch (kind) {
    case Kind::kSetParameter:
        out << "setParameter(" << number << ", " << value << ")";
        break;
    case Kind::kSetProgram:
        out << "setProgram(" << number << ")";
        break;
    case Kind::kResume:
        out << "resume()";
        break;
    case Kind::kSuspend:
        out << "suspend()";
        break;
    case Kind::kSetSampleRate:
        out << "setSampleRate(" << value << ")";
        break;
    case Kind::kSetBlockSize:
        out << "setBlockSize(" << number << ")";
        break;
    case Kind::kProcess:
        out << "process(" << number << " frames, signal " << static_cast<int>(signal) << " seed "
            << signalSeed << ", inputs at " << layout.inputs[0] << " and " << layout.inputs[1]
            << ", outputs at " << layout.outputs[0] << " and " << layout.outputs[1] << ")";
        break;
    }
    return out.str();
}
