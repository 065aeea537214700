#include "soundlib/SmoothingFilter.h"

#include <cmath>

namespace {

constexpr double kRadiansPerHertz = 0.00014247585730565955; // 2 pi / 44100
constexpr double kHalfOverQ = 0.4545454446934474;           // 0.5 / 1.1f

} // namespace

void designSmoother(SmoothingFilter* filter, float frequency) {
    filter->omega = static_cast<double>(frequency) * kRadiansPerHertz;
    const double s = std::sin(filter->omega);
    const double c = std::cos(filter->omega);
    filter->alpha = s * kHalfOverQ;
    filter->a0 = filter->alpha + 1.0;
    filter->a1 = c * -2.0;
    filter->a2 = 1.0 - filter->alpha;
    filter->b0 = 0.5 - c * 0.5;
    filter->b1 = 1.0 - c;
    filter->b2 = 0.5 - c * 0.5;
    filter->input1 = 0.0;
    filter->input2 = 0.0;
    filter->output1 = 0.0;
    filter->output2 = 0.0;
}

double tickSmoother(SmoothingFilter* filter, double input) {
    const double inv = 1.0 / filter->a0;
    // b2 is divided where the others are multiplied by the reciprocal: the last bit depends on it.
    const double y = ((filter->b2 / filter->a0) * filter->input2 +
                      (filter->input1 * filter->b1 * inv + input * filter->b0 * inv)) -
                     (filter->output2 * filter->a2 * inv + filter->output1 * filter->a1 * inv);
    filter->input2 = filter->input1;
    filter->input1 = input;
    filter->output2 = filter->output1;
    filter->output1 = y;
    return y;
}
