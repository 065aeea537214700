// The level over time at one output of an effect.
#pragma once

#include "host/measure/EffectMeasurement.h"
#include "host/plot/Canvas.h"
#include "host/plot/PlotAxis.h"

#include <string>

namespace tvhost {

// Draws the level over time at one output, one colour for each input that the impulse went into.
class EchoPanel {
public:
    // `seconds`, the time drawn; `top` and `floor`, the levels in dB at the upper and lower edge of
    // the scale. Room for labels lies above `top`.
    EchoPanel(const EffectMeasurement& measurement, int output, const Rectangle& area,
              double seconds, double top, double floor, double labelRoom);

    // With labelled axes and every echo marked by its time and level, as far as the labels fit.
    void draw(Canvas& canvas, bool timeLabels) const;
    // Grid and levels alone, with `name` in the corner.
    void drawSmall(Canvas& canvas, const std::string& name) const;

    // Where the dot of an arrival lies.
    double xOf(const Echo& echo) const;
    double yOf(const Echo& echo) const;

private:
    void drawLevels(Canvas& canvas, int input) const;
    void drawMarks(Canvas& canvas) const;

    const EffectMeasurement& measurement_;
    int output_;
    Rectangle area_;
    PlotAxis time_;  // seconds
    PlotAxis level_; // dB
};

} // namespace tvhost
