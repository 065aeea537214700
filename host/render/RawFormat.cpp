#include "host/render/RawFormat.h"

#include "host/base/NumberText.h"
#include "host/base/PlainText.h"
#include "host/base/UserError.h"

#include <sndfile.h>

#include <cstdint>
#include <vector>

namespace tvhost {

namespace {

struct Kind {
    const char* name;
    int code;
};

constexpr Kind kKinds[] = {
    {"u8", SF_FORMAT_PCM_U8},
    {"s16le", SF_FORMAT_PCM_16 | SF_ENDIAN_LITTLE},
    {"s16be", SF_FORMAT_PCM_16 | SF_ENDIAN_BIG},
    {"s24le", SF_FORMAT_PCM_24 | SF_ENDIAN_LITTLE},
    {"s24be", SF_FORMAT_PCM_24 | SF_ENDIAN_BIG},
    {"s32le", SF_FORMAT_PCM_32 | SF_ENDIAN_LITTLE},
    {"s32be", SF_FORMAT_PCM_32 | SF_ENDIAN_BIG},
    {"f32le", SF_FORMAT_FLOAT | SF_ENDIAN_LITTLE},
    {"f32be", SF_FORMAT_FLOAT | SF_ENDIAN_BIG},
    {"f64le", SF_FORMAT_DOUBLE | SF_ENDIAN_LITTLE},
    {"f64be", SF_FORMAT_DOUBLE | SF_ENDIAN_BIG},
};

constexpr std::int64_t kHighestRate = 10'000'000; // as far as any file says
constexpr std::int64_t kMostChannels = 1024;      // as libsndfile takes them

std::vector<std::string> parts(const std::string& text) {
    std::vector<std::string> result(1);
    for (const char c : text) {
        if (c == ',') {
            result.emplace_back();
        } else {
            result.back() += c;
        }
    }
    return result;
}

} // namespace

RawFormat RawFormat::from(const std::string& text) {
    const std::vector<std::string> given = parts(text);
    RawFormat format;
    for (const Kind& kind : kKinds) {
        if (equalWithoutCase(given.front(), kind.name)) {
            format.code = SF_FORMAT_RAW | kind.code;
            format.name = kind.name;
        }
    }
    if (format.name.empty()) {
        throw UserError("--raw " + text + ": \"" + given.front() +
                        "\" is not a kind of samples; give one of " + kinds());
    }
    if (given.size() == 1) {
        return format;
    }
    const auto rate = parseWholeNumber(given[1]);
    const auto channels = given.size() == 3 ? parseWholeNumber(given[2]) : std::nullopt;
    if (!rate || *rate < 1 || *rate > kHighestRate || !channels || *channels < 1 ||
        *channels > kMostChannels) {
        throw UserError("--raw " + text + ": give KIND,RATE,CHANNELS, such as f32le,44100,2");
    }
    format.sampleRate = static_cast<int>(*rate);
    format.channels = static_cast<int>(*channels);
    return format;
}

std::string RawFormat::kinds() {
    std::string text;
    for (const Kind& kind : kKinds) {
        text += (text.empty() ? "" : ", ") + std::string(kind.name);
    }
    return text;
}

} // namespace tvhost
