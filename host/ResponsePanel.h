#pragma once

#include "host/Canvas.h"
#include "host/EffectMeasurement.h"
#include "host/FrequencyResponse.h"
#include "host/PlotAxis.h"

#include <string>
#include <vector>

namespace tvhost {

// Draws the frequency response of the first echo and of the fifth on the path that leads; of the
// direct sound when there is no echo.
class ResponsePanel {
public:
    ResponsePanel(const EffectMeasurement& measurement, const Rectangle& area);

    void draw(Canvas& canvas) const;
    void drawSmall(Canvas& canvas) const;

private:
    struct Curve {
        std::string name;
        FrequencyResponse response;
        Colour colour;
        double width;
        double dash;
    };

    void drawCurve(Canvas& canvas, const Curve& curve, double widthFactor) const;

    Rectangle area;
    std::vector<Curve> curves;
    PlotAxis frequency; // Hz
    PlotAxis level;     // dB
};

} // namespace tvhost
