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

PlotAxis::PlotAxis(double from_, double to_, double start_, double end_, Scale scale_)
    : low(from_), high(to_), start(start_), end(end_), scale(scale_) {}

double PlotAxis::at(double value) const {
    const double share = scale == Scale::Straight ? (value - low) / (high - low)
                                                  : std::log(value / low) / std::log(high / low);
    return start + share * (end - start);
}

double PlotAxis::valueAt(double position) const {
    const double share = (position - start) / (end - start);
    return scale == Scale::Straight ? low + share * (high - low)
                                    : low * std::pow(high / low, share);
}

double PlotAxis::within(double value) const {
    return at(std::clamp(value, std::min(low, high), std::max(low, high)));
}

std::vector<double> PlotAxis::ticks(int most) const {
    const double range = std::abs(high - low);
    double step = std::pow(10.0, std::floor(std::log10(range / most)));
    for (const double factor : {2.0, 2.5, 2.0}) {
        if (range / step <= most) {
            break;
        }
        step *= factor;
    }
    std::vector<double> result;
    const double lowest = std::min(low, high);
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
