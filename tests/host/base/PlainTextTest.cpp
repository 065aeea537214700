#include "host/base/PlainText.h"

#include <gtest/gtest.h>

using namespace tvhost;

namespace {

const std::string kReplaced = "\xEF\xBF\xBD";

} // namespace

TEST(PlainText, KeepsWellFormedText) {
    for (const char* text :
         {"", "Delay", "Wei\xC3\x9F", "\xE2\x99\xAB", "\xF0\x9F\x8E\xB8", "a b"}) {
        EXPECT_EQ(plainText(text), text);
    }
}

TEST(PlainText, TurnsControlCharactersIntoBlanksAndTrims) {
    EXPECT_EQ(plainText("a\nb\tc\x7F"
                        "d"),
              "a b c d");
    EXPECT_EQ(plainText("  padded \r\n"), "padded");
    EXPECT_EQ(plainText("\n\t"), "");
    EXPECT_EQ(plainText("\x1B[31mred"), "[31mred");
}

TEST(PlainText, ReplacesWhatIsNoUtf8) {
    EXPECT_EQ(plainText("\xFF"), kReplaced);
    EXPECT_EQ(plainText("\xC3"), kReplaced);
    EXPECT_EQ(plainText("\xC3("), kReplaced + "(");
    EXPECT_EQ(plainText("\xC0\xAF"), kReplaced + kReplaced);                 // longer than needed
    EXPECT_EQ(plainText("\xE0\x80\x80"), kReplaced + kReplaced + kReplaced); // longer than needed
    EXPECT_EQ(plainText("\xED\xA0\x80"), kReplaced + kReplaced + kReplaced); // half a pair
    EXPECT_EQ(plainText("\xF4\x90\x80\x80").substr(0, 3), kReplaced);        // beyond the last one
    EXPECT_EQ(plainText("\xE9t\xE9"), kReplaced + "t" + kReplaced);
}

TEST(PlainText, ComparesAsciiLettersWithoutCase) {
    EXPECT_TRUE(equalWithoutCase("lowPass Type", "LOWPASS TYPE"));
    EXPECT_TRUE(equalWithoutCase("", ""));
    EXPECT_FALSE(equalWithoutCase("Mix", "Mix "));
    EXPECT_FALSE(equalWithoutCase("[", "{"));
    EXPECT_FALSE(equalWithoutCase("Mix", "Mi"));
}

TEST(PlainText, CountsCharactersNotBytes) {
    EXPECT_EQ(columnsOf(""), 0u);
    EXPECT_EQ(columnsOf("Delay"), 5u);
    EXPECT_EQ(columnsOf("Wei\xC3\x9F\xE2\x99\xAB"), 5u);
}
