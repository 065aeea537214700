// Low-pass of second order that takes the steps out of a control value.
#pragma once

// Plain record; copying it copies the running filter. `a` is the denominator here, `b` the
// numerator, and neither is normalised.
struct SmoothingFilter {
    double input1;
    double input2;
    double output1;
    double output2;
    double a0;
    double a1;
    double a2;
    double b0;
    double b1;
    double b2;
    double omega; // radians per sample at 44100 Hz
    double alpha;
};

// Designs `filter` as a low-pass at `frequency` Hz for a rate of 44100 Hz, Q 1.1, gain 1 at DC, and
// clears its history. Meaningful between 0 and 22050 Hz; other values are designed as they stand.
// Not to be called while another thread ticks the filter.
void designSmoother(SmoothingFilter* filter, float frequency);

// Advances `filter` by one sample and gives its output, which `output1` keeps. Allocates nothing.
double tickSmoother(SmoothingFilter* filter, double input);
