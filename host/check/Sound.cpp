#include "host/check/Sound.h"

#include "host/base/NumberText.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tvhost {

namespace {

constexpr double kFloorDb = -400.0;

} // namespace

Sound silence(int channels, int frames) {
    return Sound(static_cast<std::size_t>(channels),
                 std::vector<float>(static_cast<std::size_t>(frames)));
}

Sound noise(CheckRun& run, int channels, int frames, float level) {
    Sound sound = silence(channels, frames);
    for (std::vector<float>& channel : sound) {
        for (float& sample : channel) {
            sample = (2.0f * run.uniform() - 1.0f) * level;
        }
    }
    return sound;
}

float peak(const Sound& sound, std::size_t first, std::size_t end) {
    float highest = 0.0f;
    for (const std::vector<float>& channel : sound) {
        for (std::size_t i = first; i < std::min(end, channel.size()); ++i) {
            const float level = std::fabs(channel[i]);
            highest = std::isfinite(level) ? std::max(highest, level)
                                           : std::numeric_limits<float>::infinity();
        }
    }
    return highest;
}

bool isFinite(const Sound& sound) {
    return std::isfinite(peak(sound));
}

double levelInDb(const Sound& sound) {
    double power = 0.0;
    double count = 0.0;
    for (const std::vector<float>& channel : sound) {
        for (const float sample : channel) {
            power += static_cast<double>(sample) * static_cast<double>(sample);
        }
        count += static_cast<double>(channel.size());
    }
    return power == 0.0 ? kFloorDb : std::max(kFloorDb, 10.0 * std::log10(power / count));
}

double differenceInDb(const Sound& a, const Sound& b) {
    double difference = 0.0;
    double loudA = 0.0;
    double loudB = 0.0;
    for (std::size_t c = 0; c < std::min(a.size(), b.size()); ++c) {
        for (std::size_t i = 0; i < std::min(a[c].size(), b[c].size()); ++i) {
            const double x = static_cast<double>(a[c][i]);
            const double y = static_cast<double>(b[c][i]);
            if (std::isnan(x) && std::isnan(y)) {
                continue;
            }
            if (!std::isfinite(x) || !std::isfinite(y)) {
                if (x != y) {
                    return 0.0;
                }
                continue;
            }
            difference += (x - y) * (x - y);
            loudA += x * x;
            loudB += y * y;
        }
    }
    if (difference <= 0.0) {
        return kFloorDb;
    }
    return std::max(decibels(std::sqrt(difference / std::max(loudA, loudB))), kFloorDb);
}

} // namespace tvhost
