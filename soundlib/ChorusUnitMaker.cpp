#include "soundlib/ChorusUnitMaker.h"

#include <memory>

namespace {

constexpr int kLineLength = 8192;

// Gain at DC is 1, so a filter whose history holds the value alone stays there.
void settle(SmoothingFilter* filter, float value) {
    filter->input1 = filter->input2 = static_cast<double>(value);
    filter->output1 = filter->output2 = static_cast<double>(value);
}

} // namespace

ChorusUnit* makeChorusUnit() {
    auto unit = std::make_unique<ChorusUnit>();
    auto lineLeft = std::make_unique<double[]>(kLineLength);
    auto lineRight = std::make_unique<double[]>(kLineLength);
    auto delaySmoother = std::make_unique<SmoothingFilter>();
    auto wetSmoother = std::make_unique<SmoothingFilter>();

    designSmoother(delaySmoother.get(), kDelaySmootherFrequency);
    designSmoother(wetSmoother.get(), kWetSmootherFrequency);

    unit->setMode(0.0f);
    unit->setRate(0.3f);
    unit->setDepth(0.25f);
    unit->setDelay(0.5f);
    unit->setFeedback(0.0f);
    unit->setWet(0.5f);
    settle(delaySmoother.get(), unit->delayValue);
    settle(wetSmoother.get(), unit->wetValue);

    unit->delayLineLeft = lineLeft.release();
    unit->delayLineRight = lineRight.release();
    unit->delaySmoother = delaySmoother.release();
    unit->wetSmoother = wetSmoother.release();
    return unit.release();
}

void destroyChorusUnit(ChorusUnit* unit) {
    if (unit == nullptr) {
        return;
    }
    delete[] unit->delayLineLeft;
    delete[] unit->delayLineRight;
    delete unit->delaySmoother;
    delete unit->wetSmoother;
    delete unit;
}
