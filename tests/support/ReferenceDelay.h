// The whole effect once more, as a model to compare with: parameters, programs, the change of the
// sample rate and the signal path, one sample after the other in plain scalar arithmetic.
#pragma once

#include "tests/support/ReferenceFilter.h"

#include <cstdint>
#include <string>
#include <vector>

// One thread. Nothing is read ahead, so a parameter that is set between two calls of `process` is
// heard exactly from the first sample of the second call on.
class ReferenceDelay {
public:
    static constexpr std::int64_t kCapacity = 192000;
    static constexpr std::int64_t kSineEntries = 179692;
    static constexpr int kPrograms = 26;

    struct Program {
        float delayTime;
        float feedBack;
        double lowPass;
        double highPass;
        bool highPassType;
        bool lowPassType;
        double leftRight;
        double panDepth;
        double mix;
        std::string name;
    };

    ReferenceDelay();

    void setSampleRate(float rate) { sampleRate = rate; }
    void resume();
    void setParameter(std::int32_t index, float value);
    float getParameter(std::int32_t index) const;
    void setProgram(std::int32_t program);
    void process(float** inputs, float** outputs, std::int32_t frames);

    float sampleRate = 44100.0f;
    std::int32_t curProgram = 0;
    std::vector<Program> programs;

    float delayTime;
    float feedBack;
    double lowPass;
    double highPass;
    bool lowPassType;
    bool highPassType;
    double leftRight;
    double panDepth;
    double mix;

    std::vector<float> delayBufferLeft;
    std::vector<float> delayBufferRight;
    std::int64_t delayLength = 0;
    std::int64_t delayPosition = 0;
    double sweepPhase = 0.0;
    std::int64_t sineIndex = 0;
    bool panSide = false;
    std::int64_t lastSampleRate = 44100;
    ReferenceFilter lowPassLeft;
    ReferenceFilter lowPassRight;
    ReferenceFilter highPassLeft;
    ReferenceFilter highPassRight;
    int rateChanges = 0; // that `process` has followed

    static const std::vector<double>& sineTable();

private:
    void makeFilters();
    void takeLength();
    void clearLines();
    void followSampleRate();
    void updateSweep();
};
