#include "host/base/NumberText.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace tvhost {

namespace {

template <typename Number>
std::optional<Number> parseWhole(std::string_view text) {
    Number value{};
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    const auto result = std::from_chars(begin, end, value);
    if (result.ec != std::errc() || result.ptr != end) {
        return std::nullopt;
    }
    return value;
}

} // namespace

std::optional<double> parseNumber(std::string_view text) {
    const auto value = parseWhole<double>(text);
    if (!value || !std::isfinite(*value)) {
        return std::nullopt;
    }
    return value;
}

std::optional<std::int64_t> parseWholeNumber(std::string_view text) {
    return parseWhole<std::int64_t>(text);
}

std::string fixedNumber(double value, int digits) {
    char buffer[400];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, digits);
    return {buffer, result.ptr};
}

std::string exactNumber(float value) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return {buffer, result.ptr};
}

std::string shortNumber(double value, int digits) {
    std::string text = fixedNumber(value, digits);
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') {
            text.pop_back();
        }
    }
    return text == "-0" ? "0" : text;
}

double decibels(double amplitude) {
    return amplitude == 0.0 ? -std::numeric_limits<double>::infinity()
                            : 20.0 * std::log10(std::abs(amplitude));
}

std::string decibelText(double amplitude, int digits) {
    const double level = decibels(amplitude);
    if (!std::isfinite(level)) {
        return "-inf dB";
    }
    std::string text = fixedNumber(level, digits);
    // A level that rounds to nothing has no sign.
    if (text.find_first_not_of("-0.") == std::string::npos && text[0] == '-') {
        text.erase(0, 1);
    }
    return text + " dB";
}

} // namespace tvhost
