// Coefficients of one second-order filter from a type, a frequency, a Q and a gain.
#pragma once

#include <cstdint>

// The transfer function is (a0 + a1 z^-1 + a2 z^-2) / (1 + b1 z^-1 + b2 z^-2).
//
// Every setter redesigns at once and leaves the state, so that a running filter isn't silenced.
// Nothing is checked: a frequency of 0.5 or a Q of 0 gives what the arithmetic gives. One thread at
// a time.
class BiquadDesigner {
public:
    // Passes the signal unchanged until the first setter designs.
    BiquadDesigner() = default;

    BiquadDesigner(std::int32_t filterType, double frequency, double q, double gainDb);

    ~BiquadDesigner() {}

    // `type`: 0 low-pass, 1 high-pass, 2 band-pass, 3 notch, 4 peak, 5 low shelf, 6 high shelf;
    // any other is stored and leaves the coefficients as they are. `frequency`: fraction of the
    // sample rate, 0 to 0.5. `gainDb`: decibels, read by types 4 to 6. The shelves don't read `q`.
    void setBiquad(std::int32_t type, double frequency, double q, double gainDb);
    void setType(std::int32_t type);
    void setQ(double q);
    void setFrequency(double frequency);
    void setPeakGain(double gainDb);

    // Computes the coefficients from the four fields they follow from. The setters call it.
    void design();

    std::int32_t filterType = 0;
    double a0 = 1.0;
    double a1 = 0.0;
    double a2 = 0.0;
    double b1 = 0.0;
    double b2 = 0.0;
    double frequency = 0.5;
    double q = 0.707;
    double gainDb = 0.0;
    double state1 = 0.0;
    double state2 = 0.0;
};
