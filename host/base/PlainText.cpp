#include "host/base/PlainText.h"

#include <algorithm>
#include <cstdint>

namespace tvhost {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Length of the well-formed UTF-8 sequence at the start of `text`, 0 if there is none.
std::size_t sequenceLength(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(0);
    std::size_t length = 0;
    std::uint32_t code = 0;
    std::uint32_t smallest = 0;
    if (first < 0x80) {
        return 1;
    }
    if (first >= 0xC2 && first < 0xE0) {
        length = 2;
        code = first & 0x1Fu;
        smallest = 0x80;
    } else if (first >= 0xE0 && first < 0xF0) {
        length = 3;
        code = first & 0x0Fu;
        smallest = 0x800;
    } else if (first >= 0xF0 && first < 0xF5) {
        length = 4;
        code = first & 0x07u;
        smallest = 0x10000;
    } else {
        return 0;
    }
    if (text.size() < length) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0u) != 0x80u) {
            return 0;
        }
        code = code << 6 | (byte(i) & 0x3Fu);
    }
    const bool surrogate = code >= 0xD800 && code < 0xE000;
    return code < smallest || code > 0x10FFFF || surrogate ? 0 : length;
}

} // namespace

std::string plainText(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::size_t length = sequenceLength(text);
        const auto first = static_cast<unsigned char>(text[0]);
        if (length == 0) {
            result += kReplacement;
        } else if (first < 0x20 || first == 0x7F) {
            result += ' ';
        } else {
            result += text.substr(0, length);
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    const std::size_t begin = result.find_first_not_of(' ');
    if (begin == std::string::npos) {
        return {};
    }
    return result.substr(begin, result.find_last_not_of(' ') - begin + 1);
}

bool equalWithoutCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lower(x) == lower(y); });
}

std::size_t columnsOf(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0u) != 0x80u;
    }));
}

} // namespace tvhost
