// The chorus evaluated one value at a time, as plainly as it can be written.
#pragma once

#include <cstddef>
#include <vector>

struct ReferenceSmoother {
    double in1 = 0, in2 = 0, out1 = 0, out2 = 0;
    double a0 = 1, a1 = 0, a2 = 0, b0 = 0, b1 = 0, b2 = 0;

    void design(float frequency);
    double tick(double input);
};

struct ReferenceChorus {
    float delayValue = 0, wetValue = 0;
    double lfoRate = 0, feedback = 0, feedbackScale = 0, lfoDepth = 0, lfoLimit = 0;
    std::vector<double> lineLeft = std::vector<double>(8192);
    std::vector<double> lineRight = std::vector<double>(8192);
    int writeIndex = 0;
    double lfoStep = 0, lfoValue = 0, lastLeft = 0, lastRight = 0;
    double wetGainLeft = 0, dryGainLeft = 0, wetGainRight = 0, dryGainRight = 0;
    bool monoInput = false;
    ReferenceSmoother delaySmoother;
    ReferenceSmoother wetSmoother;
    bool oneSmoother = false; // delaySmoother serves the wet level too

    void setRate(float value);
    void setDepth(float value);
    void setFeedback(float value);
    void setMode();
    void restartLfo();

    // Reads both inputs of a frame before it writes an output, so buffers may be shared.
    void process(const float* inputLeft, const float* inputRight, float* outputLeft,
                 float* outputRight, std::ptrdiff_t frames);

private:
    void processFrame(float left, float right, float& outputLeft, float& outputRight);
    void moveLfo();
};
