#include "host/plot/ResponsePanel.h"

#include "host/plot/PlotStyle.h"

#include <algorithm>
#include <cmath>

namespace tvhost {

namespace {

constexpr double kLowest = 20.0;
constexpr double kHighest = 20000.0;
constexpr double kAxisSize = 9.5;
constexpr double kLegendSize = 10.0;
constexpr int kSteps = 350;
constexpr double kLeastRange = 50.0;  // dB
constexpr double kBelowPeak = 30.0;   // dB
constexpr std::size_t kLaterEcho = 4; // the fifth

constexpr double kLabelled[] = {20.0,   50.0,   100.0,  200.0,   500.0,
                                1000.0, 2000.0, 5000.0, 10000.0, 20000.0};

double highestLevel(const FrequencyResponse& response) {
    double highest = -300.0;
    for (int i = 0; i <= kSteps; ++i) {
        highest = std::max(highest, response.decibelsAt(kLowest * std::pow(kHighest / kLowest,
                                                                           i / double{kSteps})));
    }
    return highest;
}

} // namespace

ResponsePanel::ResponsePanel(const EffectMeasurement& measurement, const Rectangle& area)
    : area_(area),
      frequency_(kLowest, kHighest, area_.x, area_.right(), PlotAxis::Scale::kLogarithmic) {
    const EffectMeasurement::Path path = measurement.leadingPath();
    const EchoAnalysis& echoes = measurement.echoes(path.input, path.output);
    const double rate = measurement.response().sampleRate();
    const std::vector<float>& samples = measurement.response().path(path.input, path.output);
    const auto add = [&](const std::string& name, const Echo& echo, const Colour& colour,
                         double width, double dash) {
        const std::string words =
            name + ", " + millisecondText(static_cast<double>(echo.frame) / rate);
        curves_.push_back({words,
                           FrequencyResponse(samples.data() + echo.begin,
                                             static_cast<std::size_t>(echo.end - echo.begin), rate),
                           colour, width, dash});
    };
    if (echoes.echoCount() > 0) {
        add("first echo", echoes.echo(0), style::inputColour(path.input), 2.2, 0.0);
    } else if (echoes.hasDirect()) {
        add("direct sound", echoes.arrivals().front(), style::inputColour(path.input), 2.2, 0.0);
    }
    if (echoes.echoCount() > kLaterEcho) {
        add("fifth echo", echoes.echo(kLaterEcho), style::kLaterEcho, 1.8, 5.0);
    }

    double lowestPeak = 0.0;
    for (const Curve& curve : curves_) {
        const double peak = highestLevel(curve.response);
        const bool first = &curve == &curves_.front();
        highestGain_ = first ? peak : std::max(highestGain_, peak);
        lowestPeak = first ? peak : std::min(lowestPeak, peak);
    }
    // The same range in most pictures, so that a flat curve doesn't look like a steep one.
    lowestGain_ = std::min(highestGain_ - kLeastRange, lowestPeak - kBelowPeak);
}

void ResponsePanel::drawCurves(Canvas& canvas, const PlotAxis& levels, double widthFactor) const {
    canvas.clip(area_);
    // The first echo lies on top.
    for (auto curve = curves_.rbegin(); curve != curves_.rend(); ++curve) {
        for (int i = 0; i <= static_cast<int>(area_.width); ++i) {
            const double x = area_.x + i;
            // Far below the panel is far enough for what is next to nothing.
            const double decibel = std::max(curve->response.decibelsAt(frequency_.valueAt(x)),
                                            levels.from() - kLeastRange);
            canvas.lineTo(x, levels.at(decibel));
        }
        canvas.stroke(curve->colour, curve->width * widthFactor, curve->dash * widthFactor);
    }
    canvas.unclip();
}

void ResponsePanel::draw(Canvas& canvas) const {
    const PlotAxis level(std::floor(lowestGain_ / 10.0) * 10.0,
                         std::ceil((highestGain_ + 3.0) / 10.0) * 10.0, area_.bottom(), area_.y);
    canvas.fill(area_, style::kPaper);
    for (const double decade : {10.0, 100.0, 1000.0, 10000.0}) {
        for (int n = 2; n <= 10; ++n) {
            const double hertz = decade * n;
            if (hertz > kLowest && hertz < kHighest) {
                canvas.line(frequency_.at(hertz), area_.y, frequency_.at(hertz), area_.bottom(),
                            n == 10 ? style::kGrid : style::kFineGrid, 0.8);
            }
        }
    }
    for (const double decibel : level.ticks(7)) {
        const double y = level.at(decibel);
        canvas.line(area_.x, y, area_.right(), y, style::kGrid, 0.8);
        canvas.text(area_.x - 7.0, y + 3.4, tickText(decibel), kAxisSize, style::kMuted,
                    Align::kRight);
    }
    for (const double hertz : kLabelled) {
        canvas.text(frequency_.at(hertz), area_.bottom() + 14.0, hertzText(hertz), kAxisSize,
                    style::kMuted, Align::kCentre);
    }
    drawCurves(canvas, level, 1.0);
    canvas.frame(area_, style::kFrame, 1.0);

    // The legend, right-aligned above the panel.
    double x = area_.right();
    for (auto curve = curves_.rbegin(); curve != curves_.rend(); ++curve) {
        canvas.text(x, area_.y - 10.0, curve->name, kLegendSize, style::kInk, Align::kRight);
        x -= canvas.textWidth(curve->name, kLegendSize) + 7.0;
        canvas.moveTo(x - 22.0, area_.y - 13.5);
        canvas.lineTo(x, area_.y - 13.5);
        canvas.stroke(curve->colour, curve->width, curve->dash);
        x -= 22.0 + 18.0;
    }
}

void ResponsePanel::drawSmall(Canvas& canvas, double lowest, double highest) const {
    canvas.fill(area_, style::kBand);
    for (const double hertz : {100.0, 1000.0, 10000.0}) {
        canvas.line(frequency_.at(hertz), area_.y, frequency_.at(hertz), area_.bottom(),
                    style::kGrid, 0.7);
    }
    drawCurves(canvas, PlotAxis(lowest, highest, area_.bottom(), area_.y), 0.7);
    canvas.line(area_.x, area_.bottom(), area_.right(), area_.bottom(), style::kFrame, 0.8);
}

} // namespace tvhost
