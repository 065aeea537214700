#include "soundlib/ChorusUnit.h"

#include <cmath>
#include <emmintrin.h>

#include "soundlib/LiveField.h"

namespace {

constexpr double kTwoOverRate = 4.5351473922902495e-05; // 2 / 44100
constexpr double kLongestDelay = 441.0;                 // samples
constexpr double kRingSize = 8192.0;
constexpr std::uint32_t kRingMask = 0x1fff;

// A NaN comes out as the limit.
double atMost(double value, double limit) {
    return value < limit ? value : limit;
}

double atLeast(double value, double limit) {
    return value > limit ? value : limit;
}

double limitOutput(double value) {
    return atMost(atLeast(atMost(value, 0.999), -0.99), 0.99);
}

// The machine's conversion: out of range it gives the smallest int32, where a cast is undefined.
std::int32_t truncateToInt32(double value) {
    return _mm_cvttsd_si32(_mm_set_sd(value));
}

// The delay smoother (low lane) and the wet smoother (high lane) advanced together. Coefficients
// and history are held from construction to `store`; the arithmetic is that of `tickSmoother`.
class SmootherPair {
public:
    SmootherPair(SmoothingFilter* delay, SmoothingFilter* wet)
        : delay_(delay), wet_(wet), input1_(pair(&SmoothingFilter::input1)),
          input2_(pair(&SmoothingFilter::input2)), output1_(pair(&SmoothingFilter::output1)),
          output2_(pair(&SmoothingFilter::output2)), a1_(pair(&SmoothingFilter::a1)),
          a2_(pair(&SmoothingFilter::a2)), b0_(pair(&SmoothingFilter::b0)),
          b1_(pair(&SmoothingFilter::b1)),
          b2OverA0_(_mm_div_pd(pair(&SmoothingFilter::b2), pair(&SmoothingFilter::a0))),
          inv_(_mm_div_pd(_mm_set1_pd(1.0), pair(&SmoothingFilter::a0))) {}

    void tick(double delayInput, double wetInput, double& d, double& w) {
        const __m128d input = _mm_set_pd(wetInput, delayInput);
        const __m128d forward = _mm_add_pd(_mm_mul_pd(b2OverA0_, input2_),
                                           _mm_add_pd(_mm_mul_pd(_mm_mul_pd(input1_, b1_), inv_),
                                                      _mm_mul_pd(_mm_mul_pd(input, b0_), inv_)));
        const __m128d back = _mm_add_pd(_mm_mul_pd(_mm_mul_pd(output2_, a2_), inv_),
                                        _mm_mul_pd(_mm_mul_pd(output1_, a1_), inv_));
        input2_ = input1_;
        input1_ = input;
        output2_ = output1_;
        output1_ = _mm_sub_pd(forward, back);
        d = _mm_cvtsd_f64(output1_);
        w = _mm_cvtsd_f64(_mm_unpackhi_pd(output1_, output1_));
    }

    void store() const {
        put(&SmoothingFilter::input1, input1_);
        put(&SmoothingFilter::input2, input2_);
        put(&SmoothingFilter::output1, output1_);
        put(&SmoothingFilter::output2, output2_);
    }

private:
    using Field = double SmoothingFilter::*;

    __m128d pair(Field field) const { return _mm_set_pd(wet_->*field, delay_->*field); }

    void put(Field field, __m128d value) const {
        delay_->*field = _mm_cvtsd_f64(value);
        wet_->*field = _mm_cvtsd_f64(_mm_unpackhi_pd(value, value));
    }

    SmoothingFilter* delay_;
    SmoothingFilter* wet_;
    __m128d input1_, input2_, output1_, output2_;
    __m128d a1_, a2_, b0_, b1_, b2OverA0_, inv_;
};

// One filter that serves as both smoothers: its two ticks follow each other.
class SharedSmoother {
public:
    explicit SharedSmoother(SmoothingFilter* filter) : filter_(filter) {}

    void tick(double delayInput, double wetInput, double& d, double& w) {
        d = tickSmoother(filter_, delayInput);
        w = tickSmoother(filter_, wetInput);
    }

    void store() const {}

private:
    SmoothingFilter* filter_;
};

// From 0, rising.
void startLfo(ChorusUnit* unit, double step) {
    writeLive(unit->lfoStep, step);
    writeLive(unit->lfoValue, 0.0);
    writeLive(unit->lfoLimit, unit->lfoDepth);
}

void advanceLfo(ChorusUnit* unit) {
    const double step = readLive(unit->lfoStep);
    if (step == 0.0) {
        return;
    }
    const double value = readLive(unit->lfoValue) + step;
    writeLive(unit->lfoValue, value);
    if (value <= 0.0) {
        writeLive(unit->lfoValue, 0.0);
        writeLive(unit->lfoStep, -step);
    } else if (value >= readLive(unit->lfoLimit)) {
        writeLive(unit->lfoStep, -step);
    }
}

double interpolate(const double* line, std::uint32_t index, double fraction) {
    return line[(index + 1) & kRingMask] * fraction + line[index & kRingMask] * (1.0 - fraction);
}

template <class Smoothers>
void processBlock(ChorusUnit* unit, float** inputs, float** outputs, std::int32_t sampleFrames,
                  Smoothers smoothers) {
    const bool monoInput = readLive(unit->monoInput);
    const float* inputLeft = inputs[0];
    const float* inputRight = inputs[1];
    float* outputLeft = outputs[0];
    float* outputRight = outputs[1];
    double* lineLeft = unit->delayLineLeft;
    double* lineRight = unit->delayLineRight;
    std::int32_t writeIndex = unit->writeIndex;
    double lastLeft = unit->lastLeft;
    double lastRight = unit->lastRight;

    for (std::int32_t frame = 0; frame < sampleFrames; ++frame) {
        float left = inputLeft[frame];
        float right = inputRight[frame];
        if (monoInput) {
            left = right = (right + left) * 0.5f;
        }

        const double fb = readLive(unit->feedbackScale) * readLive(unit->feedback);
        lineLeft[writeIndex] = lastLeft * fb + static_cast<double>(left);
        lineRight[writeIndex] = lastRight * fb + static_cast<double>(right);
        writeIndex = (writeIndex + 1) & static_cast<std::int32_t>(kRingMask);

        double d;
        double w;
        smoothers.tick(static_cast<double>(readLive(unit->delayValue)),
                       static_cast<double>(readLive(unit->wetValue)), d, w);

        double position =
            (static_cast<double>(writeIndex - 1) + d * -kLongestDelay) - readLive(unit->lfoValue);
        if (position < 0.0) {
            position += kRingSize;
        }
        const std::int32_t whole = truncateToInt32(position);
        const double fraction = position - static_cast<double>(whole);
        const auto index = static_cast<std::uint32_t>(whole);
        lastLeft = interpolate(lineLeft, index, fraction);
        lastRight = interpolate(lineRight, index, fraction);
        unit->lastLeft = lastLeft;
        unit->lastRight = lastRight;

        const double outLeft = readLive(unit->dryGainLeft) * static_cast<double>(left) +
                               readLive(unit->wetGainLeft) * (w * lastLeft);
        const double outRight = readLive(unit->dryGainRight) * static_cast<double>(right) +
                                readLive(unit->wetGainRight) * (w * lastRight);
        outputLeft[frame] = static_cast<float>(limitOutput(outLeft));
        outputRight[frame] = static_cast<float>(limitOutput(outRight));

        advanceLfo(unit);
    }

    unit->writeIndex = writeIndex;
    smoothers.store();
}

} // namespace

void ChorusUnit::setRate(float value) {
    rateValue = value;
    lfoRate = std::pow(10.0, static_cast<double>(value)) * 1.0555599927902222 + -1.005559992045164;
    startLfo(this, lfoRate * kTwoOverRate * lfoDepth);
}

void ChorusUnit::setDepth(float value) {
    depthValue = value;
    const double wide = static_cast<double>(value);
    lfoDepth = wide > 0.05 ? wide * kLongestDelay : 0.0;
    startLfo(this, lfoDepth * kTwoOverRate * lfoRate);
}

void ChorusUnit::setDelay(float value) {
    writeLive(delayValue, value);
}

void ChorusUnit::setFeedback(float value) {
    feedbackValue = value;
    writeLive(feedback, static_cast<double>(value));
}

void ChorusUnit::setWet(float value) {
    writeLive(wetValue, value);
}

void ChorusUnit::setMode(float value) {
    modeValue = value;
    writeLive(monoInput, false);
    writeLive(wetGainLeft, 1.0);
    writeLive(dryGainLeft, 1.0);
    writeLive(wetGainRight, 1.0);
    writeLive(dryGainRight, 1.0);
    writeLive(feedbackScale, 1.0);
}

void process(ChorusUnit* unit, float** inputs, float** outputs, std::int32_t sampleFrames) {
    if (sampleFrames <= 0) {
        return;
    }
    if (unit->delaySmoother == unit->wetSmoother) {
        processBlock(unit, inputs, outputs, sampleFrames, SharedSmoother(unit->delaySmoother));
    } else {
        processBlock(unit, inputs, outputs, sampleFrames,
                     SmootherPair(unit->delaySmoother, unit->wetSmoother));
    }
}

void restartLfo(ChorusUnit* unit) {
    startLfo(unit, kTwoOverRate * unit->lfoDepth * unit->lfoRate);
}

double clampSample(double value) {
    return atLeast(atMost(value, 0.999), -0.999);
}
