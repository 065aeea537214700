// Numbers to text at any limit, against the numbers' exact digits.
#include "plugin/AudioEffect.h"
#include "tests/support/Bits.h"
#include "tests/support/ReferenceText.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

class Conversions : public AudioEffect {
public:
    Conversions() : AudioEffect(nullptr, 0, 0) {}
    void processReplacing(float**, float**, VstInt32) override {}
};

void expectSame(const std::vector<char>& own, const std::string& expected) {
    if (std::string(own.begin(), own.end()) != expected) {
        std::fprintf(stderr, "\"%s\" instead of \"%s\"\n", own.data(), expected.c_str());
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    FuzzedDataProvider data(bytes, size);
    Conversions conversions;
    while (data.remaining_bytes() > 0) {
        const auto maxLen = data.ConsumeIntegralInRange<VstInt32>(0, 16);
        const auto number = data.ConsumeIntegral<std::int32_t>();
        const float value = floatOf(static_cast<std::uint32_t>(number));

        // Exactly as large as a caller's text has to be.
        std::vector<char> text(static_cast<std::size_t>(maxLen) + 1, '#');
        conversions.int2string(number, text.data(), maxLen);
        expectSame(text, inField(referenceIntText(number), maxLen));

        text.assign(text.size(), '#');
        conversions.float2string(value, text.data(), maxLen);
        const auto expected = referenceFloatText(value);
        expectSame(text, expected ? inField(*expected, maxLen) : std::string(text.size(), '#'));

        conversions.setSampleRate(value);
        conversions.dB2string(value, text.data(), maxLen);
        conversions.Hz2string(value, text.data(), maxLen);
        conversions.ms2string(value, text.data(), maxLen);
    }
    return 0;
}
