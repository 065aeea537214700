// All programs of an effect on one sheet.
#pragma once

#include "host/measure/EffectMeasurement.h"
#include "host/plot/Canvas.h"

#include <vector>

namespace tvhost {

// All programs of an effect on one sheet, small and drawn to the same scale, so that they compare.
class ProgramSheet {
public:
    // At least one measurement, all of one effect.
    explicit ProgramSheet(const std::vector<EffectMeasurement>& measurements);

    double width() const;
    double height() const;
    void draw(Canvas& canvas) const;

private:
    void drawHeading(Canvas& canvas) const;
    void drawCell(Canvas& canvas, const EffectMeasurement& measurement, double x, double y) const;

    const std::vector<EffectMeasurement>& measurements_;
    int columns_;
    int rows_;
    double seconds_;
    double highestLevel_ = 0.0; // dB, at the top of the strips
    double highestGain_ = 0.0;  // dB, at the top of the frequency responses
};

} // namespace tvhost
