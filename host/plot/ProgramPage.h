// A page about one setting of an effect.
#pragma once

#include "host/measure/EffectMeasurement.h"
#include "host/plot/Canvas.h"

namespace tvhost {

// A page about one setting of an effect: its parameters, the echoes at each output and their
// frequency response.
class ProgramPage {
public:
    explicit ProgramPage(const EffectMeasurement& measurement);

    double width() const { return 1000.0; }
    double height() const;
    void draw(Canvas& canvas) const;

private:
    void drawTitle(Canvas& canvas) const;
    void drawParameters(Canvas& canvas) const;
    void drawEchoes(Canvas& canvas) const;
    void drawResponse(Canvas& canvas) const;
    int parameterRows() const;
    double echoesTop() const;
    double responseTop() const;

    const EffectMeasurement& measurement_;
};

// The round level in dB, 0 or more, that no arrival exceeds.
double levelAbove(const EffectMeasurement& measurement);

// How much time shows the echoes well: until they fall below `floor` dB, at most `mostEchoes` of
// them, at least a fifth of a second.
double secondsToShow(const EffectMeasurement& measurement, double floor, std::size_t mostEchoes);

} // namespace tvhost
