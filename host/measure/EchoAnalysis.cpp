#include "host/measure/EchoAnalysis.h"

#include <algorithm>
#include <cmath>
#include <deque>

namespace tvhost {

namespace {

constexpr double kFloor = 5e-7;     // so that the weakest arrival has -120 dB
constexpr double kProminence = 2.0; // 6 dB
constexpr double kHoldSeconds = 0.0025;

// The largest magnitude within `hold` frames before and after each frame.
std::vector<float> envelopeOf(const std::vector<float>& response, std::int64_t hold) {
    const auto size = static_cast<std::int64_t>(response.size());
    const auto magnitude = [&](std::int64_t i) {
        return std::abs(response[static_cast<std::size_t>(i)]);
    };
    std::vector<float> envelope(response.size());
    std::deque<std::int64_t> falling; // candidates, each smaller than the one before
    for (std::int64_t i = 0; i < size + hold; ++i) {
        if (i < size) {
            while (!falling.empty() && magnitude(falling.back()) <= magnitude(i)) {
                falling.pop_back();
            }
            falling.push_back(i);
        }
        const std::int64_t centre = i - hold;
        if (centre < 0) {
            continue;
        }
        while (falling.front() < centre - hold) {
            falling.pop_front();
        }
        envelope[static_cast<std::size_t>(centre)] = magnitude(falling.front());
    }
    return envelope;
}

} // namespace

EchoAnalysis::EchoAnalysis(const std::vector<float>& response, double sampleRate) {
    const std::int64_t hold = std::max<std::int64_t>(1, std::llround(kHoldSeconds * sampleRate));
    const std::vector<float> envelope = envelopeOf(response, hold);
    const auto size = static_cast<std::int64_t>(response.size());

    const auto close = [&](std::int64_t begin, std::int64_t end) {
        const auto from = response.begin() + begin;
        const auto highest = std::max_element(from, response.begin() + end, [](float a, float b) {
            return std::abs(a) < std::abs(b);
        });
        found_.push_back(
            {highest - response.begin(), std::abs(static_cast<double>(*highest)), begin, end});
    };

    // Walks the envelope from peak to valley to peak; an arrival reaches from valley to valley.
    bool rising = false;
    double highest = 0.0;
    double lowest = kFloor;
    std::int64_t begin = 0;
    std::int64_t valley = 0;
    for (std::int64_t i = 0; i < size; ++i) {
        const double level = envelope[static_cast<std::size_t>(i)];
        if (rising) {
            highest = std::max(highest, level);
            if (level < highest / kProminence) {
                rising = false;
                lowest = std::max(level, kFloor);
                valley = i;
            }
        } else if (level >= lowest * kProminence) {
            // The valley before the first arrival is where the response begins.
            if (highest > 0.0) {
                close(begin, valley);
                begin = valley;
            }
            rising = true;
            highest = level;
        } else if (level <= lowest) {
            lowest = std::max(level, kFloor);
            valley = i;
        }
    }
    if (highest > 0.0) {
        close(begin, size);
    }
    direct_ = !found_.empty() && found_.front().frame <= hold;
}

} // namespace tvhost
