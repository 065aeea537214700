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

ResponsePanel::ResponsePanel(const EffectMeasurement& measurement, const Rectangle& area_)
    : area(area_),
      frequency(kLowest, kHighest, area.x, area.right(), PlotAxis::Scale::Logarithmic) {
    const EffectMeasurement::Path path = measurement.leadingPath();
    const EchoAnalysis& echoes = measurement.echoes(path.input, path.output);
    const double rate = measurement.response().sampleRate();
    const std::vector<float>& samples = measurement.response().path(path.input, path.output);
    const auto add = [&](const std::string& name, const Echo& echo, const Colour& colour,
                         double width, double dash) {
        const std::string words =
            name + ", " + millisecondText(static_cast<double>(echo.frame) / rate);
        curves.push_back({words,
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
    for (const Curve& curve : curves) {
        const double peak = highestLevel(curve.response);
        const bool first = &curve == &curves.front();
        highestGain = first ? peak : std::max(highestGain, peak);
        lowestPeak = first ? peak : std::min(lowestPeak, peak);
    }
    // The same range in most pictures, so that a flat curve doesn't look like a steep one.
    lowestGain = std::min(highestGain - kLeastRange, lowestPeak - kBelowPeak);
}

void ResponsePanel::drawCurves(Canvas& canvas, const PlotAxis& levels, double widthFactor) const {
    canvas.clip(area);
    // The first echo lies on top.
    for (auto curve = curves.rbegin(); curve != curves.rend(); ++curve) {
        for (int i = 0; i <= static_cast<int>(area.width); ++i) {
            const double x = area.x + i;
            // Far below the panel is far enough for what is next to nothing.
            const double decibel = std::max(curve->response.decibelsAt(frequency.valueAt(x)),
                                            levels.from() - kLeastRange);
            canvas.lineTo(x, levels.at(decibel));
        }
        canvas.stroke(curve->colour, curve->width * widthFactor, curve->dash * widthFactor);
    }
    canvas.unclip();
}

void ResponsePanel::draw(Canvas& canvas) const {
    const PlotAxis level(std::floor(lowestGain / 10.0) * 10.0,
                         std::ceil((highestGain + 3.0) / 10.0) * 10.0, area.bottom(), area.y);
    canvas.fill(area, style::kPaper);
    for (const double decade : {10.0, 100.0, 1000.0, 10000.0}) {
        for (int n = 2; n <= 10; ++n) {
            const double hertz = decade * n;
            if (hertz > kLowest && hertz < kHighest) {
                canvas.line(frequency.at(hertz), area.y, frequency.at(hertz), area.bottom(),
                            n == 10 ? style::kGrid : style::kFineGrid, 0.8);
            }
        }
    }
    for (const double decibel : level.ticks(7)) {
        const double y = level.at(decibel);
        canvas.line(area.x, y, area.right(), y, style::kGrid, 0.8);
        canvas.text(area.x - 7.0, y + 3.4, tickText(decibel), kAxisSize, style::kMuted,
                    Align::Right);
    }
    for (const double hertz : kLabelled) {
        canvas.text(frequency.at(hertz), area.bottom() + 14.0, hertzText(hertz), kAxisSize,
                    style::kMuted, Align::Centre);
    }
    drawCurves(canvas, level, 1.0);
    canvas.frame(area, style::kFrame, 1.0);

    // The legend, right-aligned above the panel.
    double x = area.right();
    for (auto curve = curves.rbegin(); curve != curves.rend(); ++curve) {
        canvas.text(x, area.y - 10.0, curve->name, kLegendSize, style::kInk, Align::Right);
        x -= canvas.textWidth(curve->name, kLegendSize) + 7.0;
        canvas.moveTo(x - 22.0, area.y - 13.5);
        canvas.lineTo(x, area.y - 13.5);
        canvas.stroke(curve->colour, curve->width, curve->dash);
        x -= 22.0 + 18.0;
    }
}

void ResponsePanel::drawSmall(Canvas& canvas, double lowest, double highest) const {
    canvas.fill(area, style::kBand);
    for (const double hertz : {100.0, 1000.0, 10000.0}) {
        canvas.line(frequency.at(hertz), area.y, frequency.at(hertz), area.bottom(), style::kGrid,
                    0.7);
    }
    drawCurves(canvas, PlotAxis(lowest, highest, area.bottom(), area.y), 0.7);
    canvas.line(area.x, area.bottom(), area.right(), area.bottom(), style::kFrame, 0.8);
}

} // namespace tvhost
