#include "soundlib/examples/FilterResponse.h"

#include <algorithm>
#include <cmath>
#include <complex>

#include "soundlib/BiquadRunner.h"

namespace {

constexpr double kPi = 3.141592653589793;

template <class Gain>
Picture::Points overFrequencies(int count, double sampleRate, double low, double high, Gain gain) {
    Picture::Points points;
    for (int i = 0; i <= count; ++i) {
        const double hertz = low * std::pow(high / low, static_cast<double>(i) / count);
        points.emplace_back(hertz, gain(hertz / sampleRate));
    }
    return points;
}

} // namespace

double designedGain(const BiquadDesigner& filter, double frequency) {
    const std::complex<double> delay = std::polar(1.0, -2.0 * kPi * frequency);
    const auto response = (filter.a0 + delay * (filter.a1 + delay * filter.a2)) /
                          (1.0 + delay * (filter.b1 + delay * filter.b2));
    return 20.0 * std::log10(std::abs(response));
}

double measuredGain(BiquadDesigner filter, double frequency) {
    constexpr int kSettling = 40000;
    constexpr int kMeasured = 40000;
    std::complex<double> sum = 0.0;
    for (int i = 0; i < kSettling + kMeasured; ++i) {
        const double phase = 2.0 * kPi * std::fmod(frequency * i, 1.0);
        const double output = tickBiquad(&filter, std::sin(phase));
        if (i >= kSettling) {
            const double window = 1.0 - std::cos(2.0 * kPi * (i - kSettling) / kMeasured);
            sum += window * output * std::polar(1.0, -phase);
        }
    }
    return 20.0 * std::log10(2.0 * std::abs(sum) / kMeasured);
}

Picture::Points designedCurve(const BiquadDesigner& filter, double sampleRate, double low,
                              double high) {
    return overFrequencies(600, sampleRate, low, high,
                           [&](double frequency) { return designedGain(filter, frequency); });
}

Picture::Points measuredDots(const BiquadDesigner& filter, double sampleRate, double low,
                             double high) {
    return overFrequencies(24, sampleRate, low, high,
                           [&](double frequency) { return measuredGain(filter, frequency); });
}

Axis frequencyAxis() {
    return {20.0, 20000.0, {{20, "20"}, {100, "100"}, {1000, "1k"}, {10000, "10k"}}, "Hz", true};
}

Axis gainAxis(double low, double high, int step) {
    Axis axis{low, high, {}, "dB"};
    for (int decibels = static_cast<int>(low); decibels <= static_cast<int>(high);
         decibels += step) {
        axis.marks.emplace_back(decibels, std::to_string(decibels));
    }
    return axis;
}
