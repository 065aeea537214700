// Values to positions on the page along one direction, with labelled ticks.
#pragma once

#include <string>
#include <vector>

namespace tvhost {

// Maps values to positions on the page along one direction, straight or by the logarithm, with the
// positions of labelled ticks.
class PlotAxis {
public:
    enum class Scale { kStraight, kLogarithmic };

    // `from` lies at `start`, `to` at `end`. Logarithmic values must be positive.
    PlotAxis(double from, double to, double start, double end, Scale scale = Scale::kStraight);

    double from() const { return low_; }
    double to() const { return high_; }
    // Values beyond the ends lie beyond the positions' ends.
    double at(double value) const;
    double valueAt(double position) const;
    // Like at(), but not beyond the ends.
    double within(double value) const;

    // Round values 1, 2 or 5 times a power of ten apart, at most `most` steps, ends included.
    std::vector<double> ticks(int most) const;

private:
    double low_;
    double high_;
    double start_;
    double end_;
    Scale scale_;
};

// `value` with a true minus sign and up to `digits` digits after the point, trailing zeros
// dropped.
std::string tickText(double value, int digits = 3);
// "20", "500", "2k", "20k".
std::string hertzText(double hertz);
// "-3.2 dB" with a true minus sign.
std::string levelText(double amplitude);
// Milliseconds with one digit after the point.
std::string millisecondText(double seconds);

} // namespace tvhost
