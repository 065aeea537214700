#include "mac-check/ProgramRun.h"

#include "plugin/vst2/EffectOpcodes.h"
#include "plugin/vst2/HostOpcodes.h"

#include <cstring>

namespace {

constexpr int kFrames = 4096;
constexpr int kBlock = 512;
constexpr float kRate = 8000.0f;

constexpr std::uint64_t kHashStart = 14695981039346656037ull;
constexpr std::uint64_t kHashFactor = 1099511628211ull;

// FNV-1a.
void hashBytes(std::uint64_t& hash, const void* bytes, std::size_t size) {
    const auto* const from = static_cast<const unsigned char*>(bytes);
    for (std::size_t i = 0; i < size; ++i) {
        hash = (hash ^ from[i]) * kHashFactor;
    }
}

// Whole multiples of 2^-15 between -1 and 1: exact, whoever makes them.
class Noise {
public:
    float next() {
        state_ = state_ * 1664525u + 1013904223u;
        return static_cast<float>(static_cast<int>(state_ >> 16) - 32768) / 32768.0f;
    }

private:
    std::uint32_t state_ = 20;
};

std::uint32_t bitsOf(float sample) {
    std::uint32_t bits;
    std::memcpy(&bits, &sample, sizeof(bits));
    return bits;
}

} // namespace

VstIntPtr checkingHost(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) {
    return opcode == audioMasterVersion ? 2400 : 0;
}

ProgramResult runProgram(EffectEntry entry, int program) {
    AEffect* const effect = entry(checkingHost);
    effect->dispatcher(effect, effSetSampleRate, 0, 0, nullptr, kRate);
    effect->dispatcher(effect, effSetBlockSize, 0, kBlock, nullptr, 0.0f);
    effect->dispatcher(effect, effSetProgram, 0, program, nullptr, 0.0f);
    effect->dispatcher(effect, effMainsChanged, 0, 1, nullptr, 0.0f);
    ProgramResult result{kHashStart, {}};
    Noise noise;
    float in[2][kBlock];
    float out[2][kBlock];
    int spot = 0;
    for (int done = 0; done < kFrames; done += kBlock) {
        for (int i = 0; i < kBlock; ++i) {
            in[0][i] = noise.next();
            in[1][i] = noise.next();
        }
        float* inputs[] = {in[0], in[1]};
        float* outputs[] = {out[0], out[1]};
        effect->processReplacing(effect, inputs, outputs, kBlock);
        hashBytes(result.hash, out, sizeof(out));
        constexpr int kSpacing = kFrames / kSpots;
        for (int i = kSpacing - 1; i < kBlock; i += kSpacing, ++spot) {
            result.spots[spot] = bitsOf(out[spot % 2][i]);
        }
    }
    effect->dispatcher(effect, effMainsChanged, 0, 0, nullptr, 0.0f);
    effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
    return result;
}

std::uint64_t hashOfTexts(AEffect* effect, int parameter) {
    std::uint64_t hash = kHashStart;
    for (int i = 0; i <= 100; ++i) {
        char text[256] = "";
        effect->setParameter(effect, parameter, static_cast<float>(i) / 100.0f);
        effect->dispatcher(effect, effGetParamDisplay, parameter, 0, text, 0.0f);
        hashBytes(hash, text, std::strlen(text) + 1);
    }
    return hash;
}

std::uint32_t distanceInLastBits(std::uint32_t one, std::uint32_t other) {
    // Along the line of all floats, both zeros being one.
    const auto place = [](std::uint32_t bits) {
        const auto magnitude = static_cast<std::int64_t>(bits & 0x7fffffffu);
        return (bits >> 31) != 0 ? -magnitude : magnitude;
    };
    const std::int64_t distance = place(one) - place(other);
    return static_cast<std::uint32_t>(distance < 0 ? -distance : distance);
}
