#include "tests/soundlib/ReferenceChorus.h"

#include <cmath>
#include <cstdint>

namespace {

constexpr double kStep44100 = 4.5351473922902495e-05;

// Truncated as the machine does it: what an int32 can't hold becomes its smallest value.
std::int64_t truncated(double value) {
    if (!(value > -2147483649.0 && value < 2147483648.0)) {
        return -2147483648LL;
    }
    return static_cast<std::int64_t>(value);
}

std::size_t slot(std::int64_t index) {
    return static_cast<std::size_t>(((index % 8192) + 8192) % 8192);
}

float limited(double value) {
    if (!(value < 0.99)) {
        return static_cast<float>(0.99);
    }
    return static_cast<float>(value > -0.99 ? value : -0.99);
}

} // namespace

void ReferenceSmoother::design(float frequency) {
    const double omega = static_cast<double>(frequency) * 0.00014247585730565955;
    const double alpha = std::sin(omega) * 0.4545454446934474;
    const double c = std::cos(omega);
    a0 = alpha + 1.0;
    a1 = c * -2.0;
    a2 = 1.0 - alpha;
    b0 = 0.5 - c * 0.5;
    b1 = 1.0 - c;
    b2 = 0.5 - c * 0.5;
    in1 = in2 = out1 = out2 = 0.0;
}

double ReferenceSmoother::tick(double input) {
    const double inv = 1.0 / a0;
    const double oldest = (b2 / a0) * in2;
    const double middle = (in1 * b1) * inv;
    const double newest = (input * b0) * inv;
    const double backOldest = (out2 * a2) * inv;
    const double backNewest = (out1 * a1) * inv;
    const double y = (oldest + (middle + newest)) - (backOldest + backNewest);
    in2 = in1;
    in1 = input;
    out2 = out1;
    out1 = y;
    return y;
}

void ReferenceChorus::setRate(float value) {
    lfoRate = std::pow(10.0, static_cast<double>(value)) * 1.0555599927902222 + -1.005559992045164;
    lfoStep = (lfoRate * kStep44100) * lfoDepth;
    lfoValue = 0.0;
    lfoLimit = lfoDepth;
}

void ReferenceChorus::setDepth(float value) {
    lfoDepth = 0.0;
    if (static_cast<double>(value) > 0.05) {
        lfoDepth = static_cast<double>(value) * 441.0;
    }
    lfoStep = (lfoDepth * kStep44100) * lfoRate;
    lfoValue = 0.0;
    lfoLimit = lfoDepth;
}

void ReferenceChorus::setFeedback(float value) {
    feedback = static_cast<double>(value);
}

void ReferenceChorus::setMode() {
    monoInput = false;
    wetGainLeft = dryGainLeft = wetGainRight = dryGainRight = 1.0;
    feedbackScale = 1.0;
}

void ReferenceChorus::restartLfo() {
    lfoStep = (kStep44100 * lfoDepth) * lfoRate;
    lfoValue = 0.0;
    lfoLimit = lfoDepth;
}

void ReferenceChorus::process(const float* inputLeft, const float* inputRight, float* outputLeft,
                              float* outputRight, std::ptrdiff_t frames) {
    for (std::ptrdiff_t i = 0; i < frames; ++i) {
        processFrame(inputLeft[i], inputRight[i], outputLeft[i], outputRight[i]);
    }
}

void ReferenceChorus::processFrame(float left, float right, float& outputLeft, float& outputRight) {
    if (monoInput) {
        const float sum = right + left;
        left = sum * 0.5f;
        right = left;
    }

    const double gain = feedbackScale * feedback;
    const std::size_t write = static_cast<std::size_t>(writeIndex);
    lineLeft[write] = lastLeft * gain + static_cast<double>(left);
    lineRight[write] = lastRight * gain + static_cast<double>(right);
    writeIndex = (writeIndex + 1) % 8192;

    const double d = delaySmoother.tick(static_cast<double>(delayValue));
    double position = static_cast<double>(writeIndex - 1) + d * -441.0;
    position = position - lfoValue;
    if (position < 0.0) {
        position = position + 8192.0;
    }
    const std::int64_t whole = truncated(position);
    const double f = position - static_cast<double>(whole);
    lastLeft = lineLeft[slot(whole + 1)] * f + lineLeft[slot(whole)] * (1.0 - f);
    lastRight = lineRight[slot(whole + 1)] * f + lineRight[slot(whole)] * (1.0 - f);

    ReferenceSmoother& smoother = oneSmoother ? delaySmoother : wetSmoother;
    const double w = smoother.tick(static_cast<double>(wetValue));
    const double dryLeft = dryGainLeft * static_cast<double>(left);
    const double dryRight = dryGainRight * static_cast<double>(right);
    outputLeft = limited(dryLeft + wetGainLeft * (w * lastLeft));
    outputRight = limited(dryRight + wetGainRight * (w * lastRight));
    moveLfo();
}

void ReferenceChorus::moveLfo() {
    if (lfoStep == 0.0) {
        return;
    }
    lfoValue += lfoStep;
    if (lfoValue <= 0.0) {
        lfoValue = 0.0;
        lfoStep = -lfoStep;
    } else if (lfoValue >= lfoLimit) {
        lfoStep = -lfoStep;
    }
}
