// Measures what the design frequency of the chorus smoothers costs and buys, one line a frequency.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "soundlib/BiquadRunner.h"
#include "soundlib/SmoothingFilter.h"

namespace {

constexpr double kSampleRate = 44100.0;
constexpr double kLongestDelay = 441.0; // samples
constexpr double kPi = 3.141592653589793;

// The smoother's answer to a jump from 0 to 1.
std::vector<double> stepResponse(float frequency) {
    SmoothingFilter filter;
    designSmoother(&filter, frequency);
    std::vector<double> response(static_cast<std::size_t>(3.0 * kSampleRate));
    for (double& value : response) {
        value = tickSmoother(&filter, 1.0);
    }
    return response;
}

// Milliseconds after which the response stays within 1 % of its goal.
double settlingTime(const std::vector<double>& response) {
    std::size_t settled = response.size();
    while (settled > 0 && std::fabs(response[settled - 1] - 1.0) < 0.01) {
        --settled;
    }
    return 1000.0 * static_cast<double>(settled) / kSampleRate;
}

double overshootPercent(const std::vector<double>& response) {
    return 100.0 * (*std::max_element(response.begin(), response.end()) - 1.0);
}

// The widest that the pitch bends, in semitones, while the delay falls over its whole range: the
// read position then gains on the write position.
double pitchBend(const std::vector<double>& response) {
    double fastest = 0.0;
    for (std::size_t i = 1; i < response.size(); ++i) {
        fastest = std::max(fastest, kLongestDelay * (response[i] - response[i - 1]));
    }
    return 12.0 * std::log2(1.0 + fastest);
}

// Peak above 2 kHz, in decibels, of a 200 Hz tone at full scale whose gain follows `gain`.
double clickLevel(const std::vector<double>& gain) {
    BiquadDesigner filters[3] = {{1, 2000.0 / kSampleRate, 0.5177, 0.0},
                                 {1, 2000.0 / kSampleRate, 0.7071, 0.0},
                                 {1, 2000.0 / kSampleRate, 1.9319, 0.0}};
    double peak = 0.0;
    for (std::size_t i = 0; i < gain.size(); ++i) {
        // At its crest when the gain jumps, which is the worst moment.
        double sample =
            gain[i] * std::cos(2.0 * kPi * 200.0 * static_cast<double>(i) / kSampleRate);
        for (BiquadDesigner& filter : filters) {
            sample = tickBiquad(&filter, sample);
        }
        peak = std::max(peak, std::fabs(sample));
    }
    return 20.0 * std::log10(peak);
}

} // namespace

int main() {
    std::printf("frequency  settled within 1%%  overshoot  pitch bend      click above 2 kHz\n");
    std::printf("       Hz                 ms          %%  semitones       dB of full scale\n");
    const std::vector<double> jump(static_cast<std::size_t>(kSampleRate), 1.0);
    std::printf("%9s  %17.1f  %9.1f  %10s  %21.1f\n", "none", 0.0, 0.0, "-", clickLevel(jump));
    for (const float frequency : {1.0f, 2.0f, 5.0f, 10.0f, 15.0f, 20.0f, 30.0f, 50.0f, 100.0f}) {
        const std::vector<double> response = stepResponse(frequency);
        std::printf("%9.0f  %17.1f  %9.1f  %10.2f  %21.1f\n", static_cast<double>(frequency),
                    settlingTime(response), overshootPercent(response), pitchBend(response),
                    clickLevel(response));
    }
}
