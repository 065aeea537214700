#include "soundlib/BiquadDesigner.h"

#include <cmath>

namespace {

constexpr double rootOfTwo = 1.4142135623730951;

} // namespace

BiquadDesigner::BiquadDesigner(std::int32_t type, double newFrequency, double newQ,
                               double newGainDb) {
    setBiquad(type, newFrequency, newQ, newGainDb);
    state1 = 0.0;
    state2 = 0.0;
}

void BiquadDesigner::setBiquad(std::int32_t type, double newFrequency, double newQ,
                               double newGainDb) {
    filterType = type;
    frequency = newFrequency;
    q = newQ;
    gainDb = newGainDb;
    design();
}

void BiquadDesigner::setType(std::int32_t type) {
    filterType = type;
    design();
}

void BiquadDesigner::setQ(double newQ) {
    q = newQ;
    design();
}

void BiquadDesigner::setFrequency(double newFrequency) {
    frequency = newFrequency;
    design();
}

void BiquadDesigner::setPeakGain(double newGainDb) {
    gainDb = newGainDb;
    design();
}

// The grouping of every sum and product below decides the last bit of a coefficient.
void BiquadDesigner::design() {
    const double V = std::pow(10.0, std::fabs(gainDb) * 0.05);
    const double K = std::tan(frequency * 3.141592653589793);
    const double K2 = K * K;
    const double RK = rootOfTwo * K;
    const double SK = std::sqrt(V + V) * K;
    const double W = (1 / q) * K;
    const double U = (V * (1 / q)) * K;
    const bool boost = gainDb >= 0.0;
    double norm;

    switch (filterType) {
    case 0: // low-pass
        norm = 1 / (1 + K2 + K / q);
        a0 = K2 * norm;
        a1 = 2 * a0;
        a2 = a0;
        b1 = (2 * K2 - 2) * norm;
        b2 = (1 + K2 - K / q) * norm;
        break;
    case 1: // high-pass
        norm = 1 / (1 + K2 + K / q);
        a0 = norm;
        a1 = -2 * norm;
        a2 = norm;
        b1 = (2 * K2 - 2) * norm;
        b2 = (1 + K2 - K / q) * norm;
        break;
    case 2: // band-pass
        norm = 1 / (1 + K2 + K / q);
        a0 = (K / q) * norm;
        a1 = 0.0;
        a2 = -a0;
        b1 = (2 * K2 - 2) * norm;
        b2 = (1 + K2 - K / q) * norm;
        break;
    case 3: // notch
        norm = 1 / (1 + K2 + K / q);
        a0 = (1 + K2) * norm;
        a1 = (2 * K2 - 2) * norm;
        a2 = a0;
        b1 = a1;
        b2 = (1 + K2 - K / q) * norm;
        break;
    case 4: // peak
        if (boost) {
            norm = 1 / (1 + K2 + W);
            a0 = (1 + K2 + U) * norm;
            a1 = (2 * K2 - 2) * norm;
            a2 = (1 + K2 - U) * norm;
            b1 = a1;
            b2 = (1 + K2 - W) * norm;
        } else {
            norm = 1 / (1 + K2 + U);
            a0 = (1 + K2 + W) * norm;
            a1 = (2 * K2 - 2) * norm;
            a2 = (1 + K2 - W) * norm;
            b1 = a1;
            b2 = (1 + K2 - U) * norm;
        }
        break;
    case 5: // low shelf
        if (boost) {
            norm = 1 / (1 + K2 + RK);
            a0 = (1 + V * K2 + SK) * norm;
            a1 = (2 * V * K2 - 2) * norm;
            a2 = (1 + V * K2 - SK) * norm;
            b1 = (2 * K2 - 2) * norm;
            b2 = (1 - RK + K2) * norm;
        } else {
            norm = 1 / (1 + V * K2 + SK);
            a0 = (1 + RK + K2) * norm;
            a1 = (2 * K2 - 2) * norm;
            a2 = (1 - RK + K2) * norm;
            b1 = (2 * V * K2 - 2) * norm;
            b2 = (1 + V * K2 - SK) * norm;
        }
        break;
    case 6: // high shelf
        if (boost) {
            norm = 1 / (1 + K2 + RK);
            a0 = (V + K2 + SK) * norm;
            a1 = (norm + norm) * (K2 - V);
            a2 = (V + K2 - SK) * norm;
            b1 = (2 * K2 - 2) * norm;
            b2 = (1 - RK + K2) * norm;
        } else {
            norm = 1 / (V + K2 + SK);
            a0 = (1 + RK + K2) * norm;
            a1 = (2 * K2 - 2) * norm;
            a2 = (1 - RK + K2) * norm;
            b1 = (norm + norm) * (K2 - V);
            b2 = (V + K2 - SK) * norm;
        }
        break;
    default:
        break;
    }
}
