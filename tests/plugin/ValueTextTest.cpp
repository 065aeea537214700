// Numbers to text, against the exact decimal digits of the numbers.
#include "plugin/AudioEffect.h"
#include "tests/plugin/PlainEffect.h"
#include "tests/support/Bits.h"
#include "tests/support/Dice.h"
#include "tests/support/RandomSeed.h"
#include "tests/support/ReferenceText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr char kFiller = '\x5A';
constexpr std::size_t kFieldSize = 40;
constexpr float kInfinity = std::numeric_limits<float>::infinity();
const float kNotANumber = std::nanf("");

using Write = std::function<void(PlainEffect&, char*)>;

// All bytes of a field after `write` had it, behind the limit as well.
std::string written(PlainEffect& effect, const Write& write) {
    std::string field(kFieldSize, kFiller);
    write(effect, field.data());
    return field;
}

std::string untouched() {
    return std::string(kFieldSize, kFiller);
}

// A field that holds `text` up to its limit and nothing of the conversion behind it.
std::string holding(const std::string& text, std::int32_t maxLen) {
    const std::string head = inField(text, maxLen);
    return head + std::string(kFieldSize - head.size(), kFiller);
}

std::string floatField(float value, std::int32_t maxLen = 8) {
    PlainEffect effect;
    return written(effect,
                   [&](PlainEffect& e, char* text) { e.float2string(value, text, maxLen); });
}

std::string intField(std::int32_t value, std::int32_t maxLen = 8) {
    PlainEffect effect;
    return written(effect, [&](PlainEffect& e, char* text) { e.int2string(value, text, maxLen); });
}

std::string expectedFloatField(float value, std::int32_t maxLen = 8) {
    const auto text = referenceFloatText(value);
    return text ? holding(*text, maxLen) : untouched();
}

void expectFloat(float value, std::int32_t maxLen = 8) {
    ASSERT_EQ(floatField(value, maxLen), expectedFloatField(value, maxLen))
        << "bits " << std::hex << bitsOf(value) << std::dec << ", limit " << maxLen;
}

} // namespace

TEST(ValueText, FloatExamples) {
    const std::pair<float, const char*> examples[] = {
        {0.0f, "0.000000"},        {0.5f, "0.500000"},         {0.7f, "0.699999"},
        {1.23f, "1.230000"},       {100.0f, "100.0000"},       {440.0f, "440.0000"},
        {1234.5f, "1234.500"},     {1000000.0f, "1000000."},   {12345678.0f, "2345678."},
        {-1.0f, "-1.00000"},       {-0.25f, "-0.25000"},       {-123456.5f, "-123456."},
        {-1234567.0f, "-234567."}, {9999999.0f, "9999999."},   {-9999999.0f, "-999999."},
        {10000005.0f, "0000005."}, {99999992.0f, "9999992."},  {-0.0f, "0.000000"},
        {-1000001.0f, "-000001."}, {1e-45f, "0.000000"},       {-1e-45f, "-0.00000"},
        {0.000001f, "0.000000"},   {999999.9375f, "999999.9"}, {-99999.9375f, "-99999.9"},
        {0.99999994f, "0.999999"}, {16777216.0f, "6777216."},  {9.9999990f, "9.999999"},
    };
    for (const auto& [value, text] : examples) {
        EXPECT_EQ(floatField(value), holding(text, 8)) << value;
    }
}

TEST(ValueText, FloatOverflowLeavesTheCallersTextAlone) {
    for (const float value : {99999999.0f, 100000000.0f, -10000000.0f, -9999999.5f, 1e30f, -1e30f,
                              kInfinity, -kInfinity, kNotANumber, -kNotANumber}) {
        EXPECT_EQ(floatField(value), untouched()) << value;
    }
}

TEST(ValueText, FloatAgreesWithItsExactDigitsForRandomPatterns) {
    const std::uint64_t seed = randomSeed(0x7E17);
    SCOPED_TRACE("TVDELAY_TEST_SEED=" + std::to_string(seed));
    Dice dice(seed);
    for (int i = 0; i < 100000 && !HasFatalFailure(); ++i) {
        expectFloat(dice.anyFloat());
    }
}

TEST(ValueText, FloatAgreesWithItsExactDigitsInTheRangeThatIsShown) {
    const std::uint64_t seed = randomSeed(0x7E18);
    SCOPED_TRACE("TVDELAY_TEST_SEED=" + std::to_string(seed));
    Dice dice(seed);
    for (int i = 0; i < 150000 && !HasFatalFailure(); ++i) {
        const int exponent = static_cast<int>(dice.between(-30, 27));
        const double magnitude = std::ldexp(1.0 + dice.unit(), exponent);
        expectFloat(static_cast<float>(dice.oneIn(2) ? magnitude : -magnitude));
    }
}

// The digits change between neighbouring floats here, and nowhere else.
TEST(ValueText, FloatAgreesWithItsExactDigitsAroundShortDecimals) {
    const std::uint64_t seed = randomSeed(0x7E19);
    SCOPED_TRACE("TVDELAY_TEST_SEED=" + std::to_string(seed));
    Dice dice(seed);
    for (int i = 0; i < 60000 && !HasFatalFailure(); ++i) {
        const double places = std::pow(10.0, static_cast<double>(dice.between(0, 7)));
        const double range = std::pow(10.0, static_cast<double>(dice.between(0, 8)));
        const double decimal = std::floor(dice.unit() * range) / places;
        const auto value = static_cast<float>(dice.oneIn(2) ? decimal : -decimal);
        expectFloat(value);
        expectFloat(std::nextafter(value, kInfinity));
        expectFloat(std::nextafter(value, -kInfinity));
    }
}

TEST(ValueText, FloatAgreesWithItsExactDigitsForEveryWholeNumberThatAKnobShows) {
    for (int step = 0; step <= 20000 && !HasFatalFailure(); ++step) {
        expectFloat(static_cast<float>(step) / 100.0f);
        expectFloat(static_cast<float>(step));
    }
}

TEST(ValueText, FloatIsCutAtSmallLimits) {
    for (std::int32_t maxLen = 0; maxLen <= 12; ++maxLen) {
        for (const float value : {0.0f, 0.7f, 1234.5f, 1000000.0f, 12345678.0f, -1.0f, -0.25f,
                                  -123456.5f, -1234567.0f, 440.0f, 1e30f, kNotANumber}) {
            expectFloat(value, maxLen);
        }
    }
}

TEST(ValueText, IntExamples) {
    const std::pair<std::int32_t, const char*> examples[] = {
        {0, ""},
        {1, "1"},
        {7, "7"},
        {10, "10"},
        {44099, "44099"},
        {99999999, "99999999"},
        {-5, "-5"},
        {-10, "-10"},
        {100000000, "Huge!"},
        {2147483647, "Huge!"},
        {-100000000, "-100000000"},
        {-999999999, "-999999999"},
        {-1000000000, "-:00000000"},
        {-2147483647, "-E47483647"},
        {std::numeric_limits<std::int32_t>::min(), "-"},
    };
    for (const auto& [value, text] : examples) {
        EXPECT_EQ(intField(value, 10), holding(text, 10)) << value;
    }
}

TEST(ValueText, IntAgreesWithItsDigitsForRandomValues) {
    const std::uint64_t seed = randomSeed(0x7E1A);
    SCOPED_TRACE("TVDELAY_TEST_SEED=" + std::to_string(seed));
    Dice dice(seed);
    for (int i = 0; i < 120000; ++i) {
        const auto value = static_cast<std::int32_t>(dice.bits() >> (32 + dice.between(0, 31)));
        for (const std::int32_t signedValue :
             {value, static_cast<std::int32_t>(0u - static_cast<std::uint32_t>(value))}) {
            ASSERT_EQ(intField(signedValue, 10), holding(referenceIntText(signedValue), 10))
                << signedValue;
        }
    }
}

TEST(ValueText, IntAgreesWithItsDigitsAroundPowersOfTen) {
    for (std::int64_t power = 1; power <= 1000000000; power *= 10) {
        for (std::int64_t offset = -200; offset <= 200; ++offset) {
            for (const std::int64_t sign : {1, -1}) {
                const auto value = static_cast<std::int32_t>(sign * power + offset);
                ASSERT_EQ(intField(value, 10), holding(referenceIntText(value), 10)) << value;
            }
        }
    }
}

TEST(ValueText, IntIsCutAtSmallLimits) {
    for (std::int32_t maxLen = 0; maxLen <= 12; ++maxLen) {
        for (const std::int32_t value : {0, 5, -5, 44099, 99999999, 100000000, -2147483647,
                                         std::numeric_limits<std::int32_t>::min()}) {
            EXPECT_EQ(intField(value, maxLen), holding(referenceIntText(value), maxLen))
                << value << ", limit " << maxLen;
        }
    }
}

namespace {

std::string decibelField(float value, std::int32_t maxLen = 8) {
    PlainEffect effect;
    return written(effect, [&](PlainEffect& e, char* text) { e.dB2string(value, text, maxLen); });
}

std::string hertzField(float samples, float rate) {
    PlainEffect effect;
    effect.sampleRate = rate;
    return written(effect, [&](PlainEffect& e, char* text) { e.Hz2string(samples, text, 8); });
}

std::string millisecondField(float samples, float rate) {
    PlainEffect effect;
    effect.sampleRate = rate;
    return written(effect, [&](PlainEffect& e, char* text) { e.ms2string(samples, text, 8); });
}

} // namespace

TEST(ValueText, DecibelsOfNothingAreMinusInfinity) {
    for (const float value : {0.0f, -0.0f, -1.0f, -1e-45f, -kInfinity, kNotANumber, -kNotANumber}) {
        EXPECT_EQ(decibelField(value), holding("-oo", 8)) << value;
    }
    EXPECT_EQ(decibelField(0.0f, 2), holding("-o", 2));
    EXPECT_EQ(decibelField(0.0f, 0), holding("", 0));
}

TEST(ValueText, DecibelExamples) {
    EXPECT_EQ(decibelField(1.0f), holding("0.000000", 8));
    EXPECT_EQ(decibelField(10.0f), holding("20.00000", 8));
    EXPECT_EQ(decibelField(0.1f), holding("-20.0000", 8));
    EXPECT_EQ(decibelField(0.5f), holding("-6.02060", 8));
    EXPECT_EQ(decibelField(kInfinity), untouched());
}

TEST(ValueText, DecibelsAreWorkedOutInSinglePrecision) {
    const std::uint64_t seed = randomSeed(0x7E1B);
    SCOPED_TRACE("TVDELAY_TEST_SEED=" + std::to_string(seed));
    Dice dice(seed);
    for (int i = 0; i < 50000; ++i) {
        const float value = std::fabs(dice.anyFloat());
        if (!(value > 0.0f)) {
            continue;
        }
        const float decibels = 20.0f * ::log10f(value);
        ASSERT_EQ(decibelField(value), expectedFloatField(decibels)) << value;
    }
}

TEST(ValueText, HertzOfNoPeriodAreZero) {
    for (const float samples : {0.0f, -0.0f, kNotANumber}) {
        EXPECT_EQ(hertzField(samples, 44100.0f), holding("0.000000", 8));
        EXPECT_EQ(hertzField(samples, kNotANumber), holding("0.000000", 8));
    }
}

TEST(ValueText, HertzAreTheRateOverThePeriodInSinglePrecision) {
    EXPECT_EQ(hertzField(100.0f, 44100.0f), holding("441.0000", 8));
    EXPECT_EQ(hertzField(-100.0f, 44100.0f), holding("-441.000", 8));
    EXPECT_EQ(hertzField(1e-30f, 44100.0f), untouched());
    EXPECT_EQ(hertzField(kInfinity, 44100.0f), holding("0.000000", 8));
    const std::uint64_t seed = randomSeed(0x7E1C);
    SCOPED_TRACE("TVDELAY_TEST_SEED=" + std::to_string(seed));
    Dice dice(seed);
    for (int i = 0; i < 50000; ++i) {
        const float samples = dice.within(-100000.0f, 100000.0f);
        const float rate = dice.within(1.0f, 192000.0f);
        const float hertz = rate / samples;
        ASSERT_EQ(hertzField(samples, rate), expectedFloatField(hertz)) << samples << " " << rate;
    }
}

TEST(ValueText, MillisecondsAreWorkedOutInDoublePrecision) {
    EXPECT_EQ(millisecondField(44100.0f, 44100.0f), holding("1000.000", 8));
    EXPECT_EQ(millisecondField(1.0f, 44100.0f), holding("0.022675", 8));
    EXPECT_EQ(millisecondField(0.0f, 44100.0f), holding("0.000000", 8));
    const std::uint64_t seed = randomSeed(0x7E1D);
    SCOPED_TRACE("TVDELAY_TEST_SEED=" + std::to_string(seed));
    Dice dice(seed);
    for (int i = 0; i < 50000; ++i) {
        const float samples = dice.within(-200000.0f, 200000.0f);
        const float rate = dice.within(1.0f, 192000.0f);
        const double wide = static_cast<double>(samples) * 1000.0 / static_cast<double>(rate);
        ASSERT_EQ(millisecondField(samples, rate), expectedFloatField(static_cast<float>(wide)))
            << samples << " " << rate;
    }
}

TEST(ValueText, MillisecondsAtNoRateLeaveTheCallersTextAlone) {
    EXPECT_EQ(millisecondField(1.0f, 0.0f), untouched());
    EXPECT_EQ(millisecondField(-1.0f, 0.0f), untouched());
    EXPECT_EQ(millisecondField(0.0f, 0.0f), untouched());
}

TEST(ValueText, OverrideOfTheFloatConversionServesTheOtherThree) {
    struct Overriding : PlainEffect {
        void float2string(float value, char*, VstInt32 maxLen) override {
            seen.emplace_back(value, maxLen);
        }
        float getSampleRate() override { return 1000.0f; }
        std::vector<std::pair<float, VstInt32>> seen;
    };
    Overriding effect;
    char text[16];
    effect.dB2string(10.0f, text, 5);
    effect.Hz2string(4.0f, text, 6);
    effect.Hz2string(0.0f, text, 7);
    EXPECT_EQ(effect.seen,
              (std::vector<std::pair<float, VstInt32>>{{20.0f, 5}, {250.0f, 6}, {0.0f, 7}}));
    effect.seen.clear();
    effect.ms2string(3.0f, text, 9);
    ASSERT_EQ(effect.seen.size(), 1u);
    EXPECT_EQ(effect.seen[0].second, 9);
}
