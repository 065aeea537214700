#include "host/commands/SecondsOption.h"

#include "host/base/NumberText.h"
#include "host/base/UserError.h"
#include "host/render/TailGate.h"

namespace tvhost {

std::optional<double> secondsFrom(const char* option, const std::string& text, double longest) {
    if (text.empty()) {
        return std::nullopt;
    }
    const auto seconds = parseNumber(text);
    if (!seconds || *seconds < 0.0 || *seconds > longest) {
        throw UserError(std::string(option) + " " + text + ": give a number of seconds from 0 to " +
                        shortNumber(longest, 0));
    }
    return seconds;
}

void declareLongestGap(CLI::App& command, std::string& text) {
    command
        .add_option("--longest-gap", text,
                    "How long to wait for a further echo before the sound has ended; " +
                        shortNumber(TailGate::kUsualGapSeconds, 0) + " without")
        ->type_name("SECONDS");
}

double longestGapFrom(const std::string& text) {
    return secondsFrom("--longest-gap", text, TailGate::kLongestSeconds)
        .value_or(TailGate::kUsualGapSeconds);
}

} // namespace tvhost
