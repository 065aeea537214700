// All programs of an effect on one sheet.
#pragma once

#include "host/measure/EffectMeasurement.h"
#include "host/plot/Canvas.h"

#include <functional>

namespace tvhost {

// Small pictures, drawn to the same scale, so that they compare.
class ProgramSheet {
public:
    // Measures a program by its number from 0. Each is measured twice, for the scale and for the
    // picture, since a large bank's measurements together would fill the memory.
    using Measure = std::function<EffectMeasurement(int program)>;

    // At least one program, all of one effect.
    ProgramSheet(int programs, Measure measure);

    double width() const;
    double height() const;
    void draw(Canvas& canvas) const;

private:
    void drawHeading(Canvas& canvas, const EffectMeasurement& any) const;
    void drawCell(Canvas& canvas, const EffectMeasurement& measurement, double x, double y) const;

    int programs_;
    Measure measure_;
    int columns_;
    int rows_;
    double seconds_ = 0.0;
    double highestLevel_ = 0.0; // dB, at the top of the strips
    double highestGain_ = 0.0;  // dB, at the top of the frequency responses
};

} // namespace tvhost
