#include "plugin/VstText.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string field(std::initializer_list<const char*> parts, bool append, VstInt32 maxLen) {
    std::string bytes(24, '#');
    bool first = true;
    for (const char* part : parts) {
        if (first || !append) {
            vst_strncpy(bytes.data(), part, maxLen);
        } else {
            vst_strncat(bytes.data(), part, maxLen);
        }
        first = false;
    }
    return bytes;
}

std::string expected(const std::string& text, std::size_t size) {
    std::string bytes = text;
    bytes.resize(size, '\0');
    return bytes + std::string(24 - size, '#');
}

} // namespace

TEST(VstText, CopyFillsWithZerosUpToTheLimitAndOneFurther) {
    EXPECT_EQ(field({"abc"}, false, 8), expected("abc", 9));
    EXPECT_EQ(field({"abcdefgh"}, false, 8), expected("abcdefgh", 9));
    EXPECT_EQ(field({"abcdefghi"}, false, 8), expected("abcdefgh", 9));
    EXPECT_EQ(field({""}, false, 8), expected("", 9));
    EXPECT_EQ(field({"abc"}, false, 0), expected("", 1));
}

TEST(VstText, AppendStopsAtTheLimit) {
    EXPECT_EQ(field({"abc", "def"}, true, 8), expected("abcdef", 9));
    EXPECT_EQ(field({"abc", "defgh"}, true, 8), expected("abcdefgh", 9));
    EXPECT_EQ(field({"abc", "defghijkl"}, true, 8), expected("abcdefgh", 9));
    EXPECT_EQ(field({"abcdefgh", "x"}, true, 8), expected("abcdefgh", 9));
    EXPECT_EQ(field({"", "x"}, true, 1), expected("x", 2));
    EXPECT_EQ(field({"abc", ""}, true, 8), expected("abc", 9));
}

TEST(VstText, AppendToATextBeyondTheLimitCutsIt) {
    char text[] = "abcdefgh";
    vst_strncat(text, "xyz", 4);
    EXPECT_EQ(std::string(text, sizeof(text)), std::string("abcd\0fgh\0", 9));
}

TEST(VstText, BothAnswerTheirTarget) {
    char text[8] = "";
    EXPECT_EQ(vst_strncpy(text, "a", 4), text);
    EXPECT_EQ(vst_strncat(text, "b", 4), text);
}
