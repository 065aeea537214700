// What texts there are is the same for both checks of them.
#include "host/base/PlainText.h"
#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <algorithm>
#include <array>
#include <optional>

namespace tvhost::checks {

namespace {

constexpr std::size_t kRoom = 4096;
constexpr std::size_t kUsualRoom = 256; // what hosts have for any text, if they are generous
constexpr char kFilling = 0x55;
constexpr int kMostEach = 256; // parameters and programs to ask

struct Text {
    std::string of;
    std::optional<std::size_t> length; // nothing when it doesn't end
    std::string words;
};

// Calls `take` with every text of the effect and how long it may be.
template <typename Take>
void forAllTexts(CheckedEffect& effect, const Take& take) {
    const auto ask = [&](const std::string& of, std::size_t limit, VstInt32 opcode,
                         VstInt32 index = 0, VstIntPtr value = 0) {
        std::array<char, kRoom> buffer;
        buffer.fill(kFilling);
        effect.call(opcode, index, value, buffer.data());
        const auto isFilling = [](char c) { return c == kFilling; };
        if (std::all_of(buffer.begin(), buffer.end(), isFilling)) {
            return; // it has no such text
        }
        const auto end = std::find(buffer.begin(), buffer.end(), '\0');
        const auto length = static_cast<std::size_t>(end - buffer.begin());
        Text text{of, std::nullopt, ""};
        if (end != buffer.end()) {
            text.length = length;
            text.words = plainText(std::string(buffer.data(), length));
        }
        take(text, limit);
    };
    ask("the effect name", kVstMaxEffectNameLen, effGetEffectName);
    ask("the vendor's name", kVstMaxVendorStrLen, effGetVendorString);
    ask("the product name", kVstMaxProductStrLen, effGetProductString);
    for (int i = 0; i < std::min(effect.parameterCount(), kMostEach); ++i) {
        const std::string of = " of parameter " + std::to_string(i);
        ask("the name" + of, kVstMaxParamStrLen, effGetParamName, i);
        ask("the label" + of, kVstMaxParamStrLen, effGetParamLabel, i);
        ask("the display" + of, kVstMaxParamStrLen, effGetParamDisplay, i);
    }
    ask("the current program's name", kVstMaxProgNameLen, effGetProgramName);
    for (int i = 0; i < std::min(effect.programCount(), kMostEach); ++i) {
        ask("the name of program " + std::to_string(i), kVstMaxProgNameLen,
            effGetProgramNameIndexed, i, -1);
    }
}

} // namespace

void textsEnd(CheckRun& run) {
    CheckedEffect effect(run);
    forAllTexts(effect, [&](const Text& text, std::size_t) {
        if (!text.length) {
            run.finding("unended", text.of + " has no zero at its end");
        } else if (*text.length >= kUsualRoom) {
            run.finding("unended", text.of + " ends after " + std::to_string(*text.length) +
                                       " characters; hosts rarely have room for 256");
        }
    });
}

void textsFit(CheckRun& run) {
    CheckedEffect effect(run);
    forAllTexts(effect, [&](const Text& text, std::size_t limit) {
        if (text.length && *text.length > limit) {
            run.finding("too long", text.of + " (\"" + text.words.substr(0, 80) + "\") has " +
                                        std::to_string(*text.length) +
                                        " characters; the interface allows " +
                                        std::to_string(limit));
        }
    });
}

} // namespace tvhost::checks
