#include "host/plot/PlotAxis.h"

#include "host/base/NumberText.h"

#include <algorithm>
#include <cmath>

namespace tvhost {

namespace {

std::string withTrueMinus(std::string text) {
    if (!text.empty() && text[0] == '-') {
        text.replace(0, 1, "\u2212");
    }
    return text;
}

} // namespace

PlotAxis::PlotAxis(double from, double to, double start, double end, Scale scale)
    : low_(from), high_(to), start_(start), end_(end), scale_(scale) {}

double PlotAxis::at(double value) const {
    const double share = scale_ == Scale::kStraight
                             ? (value - low_) / (high_ - low_)
                             : std::log(value / low_) / std::log(high_ / low_);
    return start_ + share * (end_ - start_);
}

double PlotAxis::valueAt(double position) const {
    const double share = (position - start_) / (end_ - start_);
    return scale_ == Scale::kStraight ? low_ + share * (high_ - low_)
                                      : low_ * std::pow(high_ / low_, share);
}

double PlotAxis::within(double value) const {
    return at(std::clamp(value, std::min(low_, high_), std::max(low_, high_)));
}

std::vector<double> PlotAxis::ticks(int most) const {
    const double range = std::abs(high_ - low_);
    double step = std::pow(10.0, std::floor(std::log10(range / most)));
    for (const double factor : {2.0, 2.5, 2.0}) {
        if (range / step <= most) {
            break;
        }
        step *= factor;
    }
    std::vector<double> result;
    const double lowest = std::min(low_, high_);
    const double slack = step * 1e-6;
    for (double n = std::ceil((lowest - slack) / step); n * step <= lowest + range + slack; ++n) {
        result.push_back(n * step);
    }
    return result;
}

std::string tickText(double value, int digits) {
    return withTrueMinus(shortNumber(value, digits));
}

std::string hertzText(double hertz) {
    return hertz >= 1000.0 ? shortNumber(hertz / 1000.0, 1) + "k" : shortNumber(hertz, 0);
}

std::string levelText(double amplitude) {
    return withTrueMinus(decibelText(amplitude));
}

std::string millisecondText(double seconds) {
    return fixedNumber(seconds * 1000.0, 1) + " ms";
}

} // namespace tvhost
