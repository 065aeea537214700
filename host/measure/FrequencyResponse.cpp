#include "host/measure/FrequencyResponse.h"

#include "host/base/NumberText.h"

#include <kiss_fftr.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <new>

namespace tvhost {

namespace {

// Fine enough that the lowest audible octave has several bins at any usual rate.
constexpr std::size_t kShortestTransform = 32768;

} // namespace

FrequencyResponse::FrequencyResponse(const float* samples, std::size_t count, double sampleRate) {
    std::size_t size = kShortestTransform;
    while (size < count) {
        size *= 2;
    }
    std::vector<kiss_fft_scalar> padded(size);
    std::copy(samples, samples + count, padded.begin());

    const std::unique_ptr<kiss_fftr_state, void (*)(void*)> transform(
        kiss_fftr_alloc(static_cast<int>(size), 0, nullptr, nullptr), std::free);
    if (!transform) {
        throw std::bad_alloc();
    }
    std::vector<kiss_fft_cpx> bins(size / 2 + 1);
    kiss_fftr(transform.get(), padded.data(), bins.data());

    hertzPerBin_ = sampleRate / static_cast<double>(size);
    magnitudes_.reserve(bins.size());
    for (const kiss_fft_cpx& bin : bins) {
        magnitudes_.push_back(std::hypot(static_cast<double>(bin.r), static_cast<double>(bin.i)));
    }
}

double FrequencyResponse::decibelsAt(double hertz) const {
    const double last = static_cast<double>(magnitudes_.size() - 1);
    const double bin = std::clamp(hertz / hertzPerBin_, 0.0, last);
    const auto below = static_cast<std::size_t>(bin);
    const std::size_t above = std::min(below + 1, magnitudes_.size() - 1);
    const double share = bin - static_cast<double>(below);
    return decibels(magnitudes_[below] * (1.0 - share) + magnitudes_[above] * share);
}

} // namespace tvhost
