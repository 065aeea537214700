#include "host/render/HeaderPromise.h"

#include "host/render/WaveHeader.h"

#include <array>
#include <regex>

namespace tvhost {

namespace {

struct Field {
    const char* name;
    std::int64_t slack; // bytes that many writers get wrong without harm
};

constexpr std::array<Field, 5> kFields = {{
    {"data", 0},        // WAV
    {"SSND", 0},        // AIFF
    {"Data Size", 0},   // AU
    {"riff", 4096},     // W64, whose data chunk goes unchecked
    {"Riff size", 4096} // RF64, likewise
}};

} // namespace

std::optional<HeaderShortfall> headerShortfall(const std::string& log) {
    static const std::regex line(R"(^\s*(\S.*?)\s*: (\d{1,18}) \(should be (\d{1,18})\))",
                                 std::regex::ECMAScript | std::regex::multiline);
    for (std::sregex_iterator match(log.begin(), log.end(), line), end; match != end; ++match) {
        const HeaderShortfall found{std::stoll((*match)[2]), std::stoll((*match)[3])};
        for (const Field& field : kFields) {
            if ((*match)[1] == field.name && !leavesLengthOpen(found.promised) &&
                found.promised > found.present + field.slack) {
                return found;
            }
        }
    }
    return std::nullopt;
}

} // namespace tvhost
