// All programs of an effect on one sheet.
#pragma once

#include "host/measure/EffectMeasurement.h"
#include "host/plot/Canvas.h"

#include <functional>

namespace tvhost {

// Small pictures, drawn to the same scale, so that they compare.
class ProgramSheet {
public:
    using Take = std::function<void(int program, const EffectMeasurement& measurement)>;
    // Measures all programs and hands each on by its number from 0, in their order. That is asked
    // for twice, for the scale and for the picture, since a large bank's measurements together
    // would fill the memory.
    using MeasureAll = std::function<void(const Take& take)>;

    // At least one program, all of one effect.
    ProgramSheet(int programs, MeasureAll measureAll);

    double width() const;
    double height() const;
    void draw(Canvas& canvas) const;

private:
    void drawHeading(Canvas& canvas, const EffectMeasurement& any) const;
    void drawCell(Canvas& canvas, const EffectMeasurement& measurement, double x, double y) const;

    int programs_;
    MeasureAll measureAll_;
    int columns_;
    int rows_;
    double seconds_ = 0.0;
    double highestLevel_ = 0.0; // dB, at the top of the strips
    double highestGain_ = 0.0;  // dB, at the top of the frequency responses
};

} // namespace tvhost
