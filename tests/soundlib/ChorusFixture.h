// A chorus unit whose lines and smoothers a test owns, beside the reference in the same state.
#pragma once

#include <cstddef>
#include <vector>

#include "soundlib/ChorusUnit.h"
#include "tests/soundlib/ReferenceChorus.h"

struct ChorusFixture {
    ChorusUnit unit{};
    SmoothingFilter delaySmoother{};
    SmoothingFilter wetSmoother{};
    std::vector<double> lineLeft = std::vector<double>(8192);
    std::vector<double> lineRight = std::vector<double>(8192);
    ReferenceChorus reference;

    // Silent, everything at 0 but for the gains that the mode sets.
    ChorusFixture(float delayFrequency, float wetFrequency) {
        unit.delayLineLeft = lineLeft.data();
        unit.delayLineRight = lineRight.data();
        unit.delaySmoother = &delaySmoother;
        unit.wetSmoother = &wetSmoother;
        designSmoother(&delaySmoother, delayFrequency);
        designSmoother(&wetSmoother, wetFrequency);
        reference.delaySmoother.design(delayFrequency);
        reference.wetSmoother.design(wetFrequency);
        unit.setMode(0.0f);
        reference.setMode();
    }
    ChorusFixture(const ChorusFixture&) = delete;
    ChorusFixture& operator=(const ChorusFixture&) = delete;

    // Both smoothers at their goals, as after a long time.
    void settle() {
        for (SmoothingFilter* filter : {&delaySmoother, &wetSmoother}) {
            const double goal =
                static_cast<double>(filter == &delaySmoother ? unit.delayValue : unit.wetValue);
            filter->input1 = filter->input2 = filter->output1 = filter->output2 = goal;
        }
    }

    // One frame through the unit alone.
    std::pair<float, float> frame(float left, float right) {
        float* inputs[] = {&left, &right};
        float outputLeft = 0.0f;
        float outputRight = 0.0f;
        float* outputs[] = {&outputLeft, &outputRight};
        process(&unit, inputs, outputs, 1);
        return {outputLeft, outputRight};
    }
};
