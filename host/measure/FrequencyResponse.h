// The magnitude spectrum of a piece of a response.
#pragma once

#include <cstddef>
#include <vector>

namespace tvhost {

class FrequencyResponse {
public:
    // `count` samples from `samples` on; 0 gives a spectrum of nothing.
    FrequencyResponse(const float* samples, std::size_t count, double sampleRate);

    // Gain at `hertz`, from 0 to half the sample rate, between bins a straight line; -infinity
    // where there is none. Good to some 0.01 dB down to -120 dB below the strongest frequency.
    double decibelsAt(double hertz) const;

private:
    std::vector<double> magnitudes_;
    double hertzPerBin_;
};

} // namespace tvhost
