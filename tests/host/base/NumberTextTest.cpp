#include "host/base/NumberText.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>

using namespace tvhost;

TEST(NumberText, ReadsWholeDecimalNumbers) {
    EXPECT_EQ(parseNumber("0.5"), 0.5);
    EXPECT_EQ(parseNumber("-3"), -3.0);
    EXPECT_EQ(parseNumber("1e-3"), 0.001);
    EXPECT_EQ(parseNumber(".25"), 0.25);
    EXPECT_EQ(parseWholeNumber("512"), 512);
    EXPECT_EQ(parseWholeNumber("-1"), -1);
}

TEST(NumberText, RefusesEverythingElse) {
    for (const char* text : {"", " ", "0.5 ", " 0.5", "0,5", "half", "0.5x", "inf", "-inf", "nan",
                             "0x10", "1e999", "--1", "1.2.3"}) {
        EXPECT_FALSE(parseNumber(text)) << text;
    }
    for (const char* text : {"", "1.5", "1e3", "99999999999999999999", "12a", " 1"}) {
        EXPECT_FALSE(parseWholeNumber(text)) << text;
    }
}

TEST(NumberText, ReadsPointsWhateverTheLocale) {
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    // Not every system has the locale; the point must hold either way.
    std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    EXPECT_EQ(parseNumber("0.5"), 0.5);
    EXPECT_EQ(shortNumber(0.5, 3), "0.5");
    EXPECT_EQ(fixedNumber(1234.5, 3), "1234.500");
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(NumberText, ShortNumbersDropTrailingZeros) {
    EXPECT_EQ(shortNumber(0.25, 3), "0.25");
    EXPECT_EQ(shortNumber(3.0, 3), "3");
    EXPECT_EQ(shortNumber(100.0, 0), "100");
    EXPECT_EQ(shortNumber(-1.5, 1), "-1.5");
    EXPECT_EQ(shortNumber(0.0799773, 3), "0.08");
    EXPECT_EQ(shortNumber(-0.0001, 3), "0");
}

TEST(NumberText, DecibelsOfAmplitudes) {
    EXPECT_DOUBLE_EQ(decibels(1.0), 0.0);
    EXPECT_DOUBLE_EQ(decibels(10.0), 20.0);
    EXPECT_DOUBLE_EQ(decibels(-0.1), -20.0);
    EXPECT_EQ(decibels(0.0), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(decibelText(1.0), "0.0 dB");
    EXPECT_EQ(decibelText(0.5), "-6.0 dB");
    EXPECT_EQ(decibelText(2.0, 2), "6.02 dB");
    EXPECT_EQ(decibelText(0.9999), "0.0 dB");
    EXPECT_EQ(decibelText(0.0), "-inf dB");
}
