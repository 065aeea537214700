// Finds the echoes of a response from the response itself.
#pragma once

#include <cstdint>
#include <vector>

namespace tvhost {

// One arrival in a response.
struct Echo {
    std::int64_t frame; // of its highest sample
    double level;       // that sample's magnitude, 1.0 being the impulse's
    std::int64_t begin; // the frames that belong to it
    std::int64_t end;
};

// An arrival is a peak above -120 dB that
// stands 6 dB above the lowest point between it and its neighbours; peaks less than 5 ms apart
// count as one.
class EchoAnalysis {
public:
    EchoAnalysis(const std::vector<float>& response, double sampleRate);

    // Whether the sound itself comes through: an arrival within 2.5 ms of the impulse.
    bool hasDirect() const { return direct_; }

    // All arrivals in order of time, the direct sound included.
    const std::vector<Echo>& arrivals() const { return found_; }

    // Arrivals but the direct sound; echo(0) is the first one.
    std::size_t echoCount() const { return found_.size() - (direct_ ? 1 : 0); }
    const Echo& echo(std::size_t index) const { return found_[index + (direct_ ? 1 : 0)]; }

private:
    std::vector<Echo> found_;
    bool direct_ = false;
};

} // namespace tvhost
