#include "soundlib/BiquadDesigner.h"

#include <cmath>

namespace {

constexpr double kRootOfTwo = 1.4142135623730951;

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
    const double v = std::pow(10.0, std::fabs(gainDb) * 0.05);
    const double k = std::tan(frequency * 3.141592653589793);
    const double k2 = k * k;
    const double rk = kRootOfTwo * k;
    const double sk = std::sqrt(v + v) * k;
    const double w = (1 / q) * k;
    const double u = (v * (1 / q)) * k;
    const bool boost = gainDb >= 0.0;
    double norm;

    switch (filterType) {
    case 0: // low-pass
        norm = 1 / (1 + k2 + k / q);
        a0 = k2 * norm;
        a1 = 2 * a0;
        a2 = a0;
        b1 = (2 * k2 - 2) * norm;
        b2 = (1 + k2 - k / q) * norm;
        break;
    case 1: // high-pass
        norm = 1 / (1 + k2 + k / q);
        a0 = norm;
        a1 = -2 * norm;
        a2 = norm;
        b1 = (2 * k2 - 2) * norm;
        b2 = (1 + k2 - k / q) * norm;
        break;
    case 2: // band-pass
        norm = 1 / (1 + k2 + k / q);
        a0 = (k / q) * norm;
        a1 = 0.0;
        a2 = -a0;
        b1 = (2 * k2 - 2) * norm;
        b2 = (1 + k2 - k / q) * norm;
        break;
    case 3: // notch
        norm = 1 / (1 + k2 + k / q);
        a0 = (1 + k2) * norm;
        a1 = (2 * k2 - 2) * norm;
        a2 = a0;
        b1 = a1;
        b2 = (1 + k2 - k / q) * norm;
        break;
    case 4: // peak
        if (boost) {
            norm = 1 / (1 + k2 + w);
            a0 = (1 + k2 + u) * norm;
            a1 = (2 * k2 - 2) * norm;
            a2 = (1 + k2 - u) * norm;
            b1 = a1;
            b2 = (1 + k2 - w) * norm;
        } else {
            norm = 1 / (1 + k2 + u);
            a0 = (1 + k2 + w) * norm;
            a1 = (2 * k2 - 2) * norm;
            a2 = (1 + k2 - w) * norm;
            b1 = a1;
            b2 = (1 + k2 - u) * norm;
        }
        break;
    case 5: // low shelf
        if (boost) {
            norm = 1 / (1 + k2 + rk);
            a0 = (1 + v * k2 + sk) * norm;
            a1 = (2 * v * k2 - 2) * norm;
            a2 = (1 + v * k2 - sk) * norm;
            b1 = (2 * k2 - 2) * norm;
            b2 = (1 - rk + k2) * norm;
        } else {
            norm = 1 / (1 + v * k2 + sk);
            a0 = (1 + rk + k2) * norm;
            a1 = (2 * k2 - 2) * norm;
            a2 = (1 - rk + k2) * norm;
            b1 = (2 * v * k2 - 2) * norm;
            b2 = (1 + v * k2 - sk) * norm;
        }
        break;
    case 6: // high shelf
        if (boost) {
            norm = 1 / (1 + k2 + rk);
            a0 = (v + k2 + sk) * norm;
            a1 = (norm + norm) * (k2 - v);
            a2 = (v + k2 - sk) * norm;
            b1 = (2 * k2 - 2) * norm;
            b2 = (1 - rk + k2) * norm;
        } else {
            norm = 1 / (v + k2 + sk);
            a0 = (1 + rk + k2) * norm;
            a1 = (2 * k2 - 2) * norm;
            a2 = (1 - rk + k2) * norm;
            b1 = (norm + norm) * (k2 - v);
            b2 = (v + k2 - sk) * norm;
        }
        break;
    default:
        break;
    }
}
