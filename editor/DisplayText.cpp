#include "editor/DisplayText.h"

#include <cstdio>

namespace {

template <typename... Numbers>
std::string formatted(const char* format, Numbers... numbers) {
    char text[64]; // the longest text has 44 characters
    return {text, static_cast<std::size_t>(std::snprintf(text, sizeof text, format, numbers...))};
}

} // namespace

std::string percentText(std::int32_t percent) {
    return formatted("%d%%", percent);
}

std::string numberText(std::int32_t number) {
    return formatted("%d", number);
}

std::string loadingText(std::uint32_t currentSamples, std::uint32_t totalSamples) {
    return formatted("Loading Samples %d of %d", static_cast<std::int32_t>(currentSamples),
                     static_cast<std::int32_t>(totalSamples));
}
