#include "tests/support/ReferenceText.h"

#include <cmath>
#include <cstdio>
#include <stdexcept>

namespace {

// Every digit: the C library prints a number exactly, and no float has more places than these.
std::string exactDecimal(double magnitude) {
    constexpr int kPlaces = 150;
    char digits[256];
    const int written = std::snprintf(digits, sizeof(digits), "%.*f", kPlaces, magnitude);
    if (written <= 0 || written >= static_cast<int>(sizeof(digits))) {
        throw std::logic_error("a number too long for its exact text");
    }
    return digits;
}

} // namespace

std::optional<std::string> referenceFloatText(float value) {
    const bool negative = value < 0.0f;
    if (std::isnan(value) ||
        (negative ? value < -9999999.0f : static_cast<double>(value) > 99999999.0)) {
        return std::nullopt;
    }
    const std::string exact = exactDecimal(std::fabs(static_cast<double>(value)));
    const std::size_t point = exact.find('.');
    std::string integerDigits = exact.substr(0, point);
    const std::size_t room = negative ? 6 : 7;
    if (integerDigits.size() > room) {
        integerDigits = integerDigits.substr(integerDigits.size() - room);
    }
    const std::string places = exact.substr(point + 1, room - integerDigits.size());
    return (negative ? "-" : "") + integerDigits + "." + places;
}

std::string referenceIntText(std::int32_t value) {
    if (value >= 100000000) {
        return "Huge!";
    }
    const std::int64_t magnitude = std::abs(static_cast<std::int64_t>(value));
    std::string sign = value < 0 ? "-" : "";
    if (magnitude == 0 || magnitude == 2147483648) {
        return sign;
    }
    const std::string digits = std::to_string(magnitude);
    if (digits.size() <= 8) {
        return sign + digits;
    }
    const std::size_t tail = digits.size() - 8;
    const char top = static_cast<char>('0' + std::stoi(digits.substr(0, tail)));
    return sign + top + digits.substr(tail);
}

std::string inField(const std::string& text, std::int32_t maxLen) {
    std::string field = text.substr(0, static_cast<std::size_t>(maxLen));
    field.resize(static_cast<std::size_t>(maxLen) + 1, '\0');
    return field;
}
