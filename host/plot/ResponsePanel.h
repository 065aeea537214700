// The frequency response of an effect's echoes.
#pragma once

#include "host/measure/EffectMeasurement.h"
#include "host/measure/FrequencyResponse.h"
#include "host/plot/Canvas.h"
#include "host/plot/PlotAxis.h"

#include <string>
#include <vector>

namespace tvhost {

// Draws the frequency response of the first echo and of the fifth on the path that leads; of the
// direct sound when there is no echo.
class ResponsePanel {
public:
    // The scale of levels is chosen so that all curves are seen.
    ResponsePanel(const EffectMeasurement& measurement, const Rectangle& area);

    void draw(Canvas& canvas) const;
    // Grid and curves alone, with levels in dB from `lowest` to `highest`.
    void drawSmall(Canvas& canvas, double lowest, double highest) const;

    // The highest gain of any curve in dB.
    double peak() const { return highestGain_; }

private:
    struct Curve {
        std::string name;
        FrequencyResponse response;
        Colour colour;
        double width;
        double dash;
    };

    void drawCurves(Canvas& canvas, const PlotAxis& levels, double widthFactor) const;

    Rectangle area_;
    std::vector<Curve> curves_;
    PlotAxis frequency_; // Hz
    double highestGain_ = 0.0;
    double lowestGain_ = 0.0; // the scale's lower end
};

} // namespace tvhost
