#include "host/ResponsePanel.h"

#include "host/PlotStyle.h"

#include <algorithm>
#include <cmath>

namespace tvhost {

namespace {

constexpr double kLowest = 20.0;
constexpr double kHighest = 20000.0;
constexpr double kAxisSize = 9.5;
constexpr double kLegendSize = 10.0;
constexpr std::size_t kLaterEcho = 4; // the fifth

constexpr double kLabelled[] = {20.0,   50.0,   100.0,  200.0,   500.0,
                                1000.0, 2000.0, 5000.0, 10000.0, 20000.0};

double highestLevel(const FrequencyResponse& response) {
    double highest = -300.0;
    for (double hertz = kLowest; hertz <= kHighest; hertz *= 1.02)
        highest = std::max(highest, response.decibelsAt(hertz));
    return highest;
}

} // namespace

ResponsePanel::ResponsePanel(const EffectMeasurement& measurement, const Rectangle& area_)
    : area(area_), frequency(kLowest, kHighest, area.x, area.right(), PlotAxis::Scale::Logarithmic),
      level(0.0, 1.0, 0.0, 1.0) {
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
    if (echoes.echoCount() > 0)
        add("first echo", echoes.echo(0), style::inputColour(path.input), 2.2, 0.0);
    else if (echoes.hasDirect())
        add("direct sound", echoes.arrivals().front(), style::inputColour(path.input), 2.2, 0.0);
    if (echoes.echoCount() > kLaterEcho)
        add("fifth echo", echoes.echo(kLaterEcho), style::kLaterEcho, 1.8, 5.0);

    // All curves are to be seen, and a flat one is not to look like a steep one.
    double top = curves.empty() ? 0.0 : -300.0;
    double lowestPeak = 300.0;
    for (const Curve& curve : curves) {
        const double peak = highestLevel(curve.response);
        top = std::max(top, peak);
        lowestPeak = std::min(lowestPeak, peak);
    }
    const double upper = std::ceil((top + 3.0) / 10.0) * 10.0;
    const double lower = std::max(
        upper - 120.0, std::min(upper - 40.0, std::floor((lowestPeak - 20.0) / 10.0) * 10.0));
    level = PlotAxis(lower, upper, area.bottom(), area.y);
}

void ResponsePanel::drawCurve(Canvas& canvas, const Curve& curve, double widthFactor) const {
    bool first = true;
    for (double x = area.x; x <= area.right(); x += 1.0) {
        const double decibel = curve.response.decibelsAt(frequency.valueAt(x));
        const double y = level.at(std::max(decibel, level.from() - 20.0));
        if (first)
            canvas.moveTo(x, y);
        else
            canvas.lineTo(x, y);
        first = false;
    }
    canvas.stroke(curve.colour, curve.width * widthFactor, curve.dash * widthFactor);
}

void ResponsePanel::draw(Canvas& canvas) const {
    canvas.fill(area, style::kPaper);
    for (double decade = 10.0; decade < kHighest; decade *= 10.0)
        for (int n = 2; n <= 10; ++n) {
            const double hertz = decade * n;
            if (hertz > kLowest && hertz < kHighest)
                canvas.line(frequency.at(hertz), area.y, frequency.at(hertz), area.bottom(),
                            n == 10 ? style::kGrid : style::kFineGrid, 0.8);
        }
    for (const double decibel : level.ticks(7)) {
        const double y = level.at(decibel);
        canvas.line(area.x, y, area.right(), y, style::kGrid, 0.8);
        canvas.text(area.x - 7.0, y + 3.4, tickText(decibel), kAxisSize, style::kMuted,
                    Align::Right);
    }
    for (const double hertz : kLabelled)
        canvas.text(frequency.at(hertz), area.bottom() + 14.0, hertzText(hertz), kAxisSize,
                    style::kMuted, Align::Centre);
    canvas.clip(area);
    for (auto curve = curves.rbegin(); curve != curves.rend(); ++curve)
        drawCurve(canvas, *curve, 1.0);
    canvas.unclip();
    canvas.frame(area, style::kFrame, 1.0);

    // The legend, right-aligned above the panel.
    double x = area.right();
    for (auto curve = curves.rbegin(); curve != curves.rend(); ++curve) {
        canvas.text(x, area.y - 8.0, curve->name, kLegendSize, style::kInk, Align::Right);
        x -= canvas.textWidth(curve->name, kLegendSize) + 7.0;
        canvas.moveTo(x - 22.0, area.y - 11.5);
        canvas.lineTo(x, area.y - 11.5);
        canvas.stroke(curve->colour, curve->width, curve->dash);
        x -= 22.0 + 18.0;
    }
}

void ResponsePanel::drawSmall(Canvas& canvas) const {
    canvas.fill(area, style::kBand);
    for (const double hertz : {100.0, 1000.0, 10000.0})
        canvas.line(frequency.at(hertz), area.y, frequency.at(hertz), area.bottom(), style::kGrid,
                    0.7);
    canvas.clip(area);
    for (auto curve = curves.rbegin(); curve != curves.rend(); ++curve)
        drawCurve(canvas, *curve, 0.7);
    canvas.unclip();
    canvas.line(area.x, area.bottom(), area.right(), area.bottom(), style::kFrame, 0.8);
}

} // namespace tvhost
