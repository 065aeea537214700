#include "host/plot/EchoPanel.h"

#include "host/base/NumberText.h"
#include "host/plot/PlotStyle.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace tvhost {

namespace {

constexpr double kColumnWidth = 0.5;
constexpr double kLabelSize = 9.0;
constexpr double kAxisSize = 9.5;
constexpr double kSmallSize = 8.5;
constexpr double kLabelGap = 6.0;

} // namespace

EchoPanel::EchoPanel(const EffectMeasurement& measurement_, int output_, const Rectangle& area_,
                     double seconds, double top, double floor, double labelRoom)
    : measurement(measurement_), output(output_), area(area_),
      // The impulse itself is not to lie on the frame.
      time(-0.012 * seconds, seconds, area.x, area.right()),
      level(floor, top, area.bottom(), area.y + labelRoom) {}

double EchoPanel::xOf(const Echo& echo) const {
    return time.at(static_cast<double>(echo.frame) / measurement.response().sampleRate());
}

double EchoPanel::yOf(const Echo& echo) const {
    return level.within(decibels(echo.level));
}

// The highest level in each column, drawn as a column that stands on the floor.
void EchoPanel::drawLevels(Canvas& canvas, int input) const {
    const std::vector<float>& path = measurement.response().path(input, output);
    const double rate = measurement.response().sampleRate();
    const auto frameAt = [&](double x) {
        const double frame = std::ceil(time.valueAt(x) * rate);
        return std::clamp(static_cast<std::int64_t>(frame), std::int64_t{0},
                          static_cast<std::int64_t>(path.size()));
    };
    const auto floorY = level.at(level.from());
    const int columns = static_cast<int>(area.width / kColumnWidth);
    for (int column = 0; column < columns; ++column) {
        const double x = area.x + column * kColumnWidth;
        float highest = 0.0f;
        const std::int64_t end = frameAt(x + kColumnWidth);
        for (std::int64_t frame = frameAt(x); frame < end; ++frame) {
            highest = std::max(highest, std::abs(path[static_cast<std::size_t>(frame)]));
        }
        const double decibel = decibels(static_cast<double>(highest));
        if (decibel <= level.from()) {
            continue;
        }
        const double y = level.at(decibel);
        // Wide enough to be seen when it stands alone.
        const double width = 2.0 * kColumnWidth;
        canvas.fill({x - width / 2.0, y, width, floorY - y}, style::inputColour(input));
    }
}

void EchoPanel::drawMarks(Canvas& canvas) const {
    struct Mark {
        int input;
        const Echo* echo;
        bool direct;
    };
    const double rate = measurement.response().sampleRate();
    std::vector<Mark> marks;
    for (int input = 0; input < measurement.response().inputs(); ++input) {
        const EchoAnalysis& echoes = measurement.echoes(input, output);
        for (const Echo& echo : echoes.arrivals()) {
            if (static_cast<double>(echo.frame) / rate <= time.to() &&
                decibels(echo.level) >= level.from()) {
                marks.push_back(
                    {input, &echo, echoes.hasDirect() && &echo == &echoes.arrivals().front()});
            }
        }
    }
    std::stable_sort(marks.begin(), marks.end(),
                     [](const Mark& a, const Mark& b) { return a.echo->frame < b.echo->frame; });

    double labelsEnd = -kLabelGap;
    for (const Mark& mark : marks) {
        const double x = xOf(*mark.echo);
        const double y = yOf(*mark.echo);
        canvas.dot(x, y, 3.2, style::inputColour(mark.input), style::kPaper);
        const std::string when =
            mark.direct ? "direct" : millisecondText(static_cast<double>(mark.echo->frame) / rate);
        const std::string howLoud = levelText(mark.echo->level);
        const double width = std::max(canvas.textWidth(when, kLabelSize, Weight::Bold),
                                      canvas.textWidth(howLoud, kLabelSize));
        const double left = std::clamp(x - width / 2.0, area.x + 3.0, area.right() - width - 3.0);
        if (left < labelsEnd + kLabelGap) {
            continue;
        }
        labelsEnd = left + width;
        const double centre = left + width / 2.0;
        canvas.text(centre, y - 18.0, when, kLabelSize, style::kInk, Align::Centre, Weight::Bold);
        canvas.text(centre, y - 7.5, howLoud, kLabelSize, style::kMuted, Align::Centre);
    }
}

void EchoPanel::draw(Canvas& canvas, bool timeLabels) const {
    canvas.fill(area, style::kPaper);
    for (const double decibel : level.ticks(4)) {
        const double y = level.at(decibel);
        canvas.line(area.x, y, area.right(), y, style::kGrid, 0.8);
        canvas.text(area.x - 7.0, y + 3.4, tickText(decibel), kAxisSize, style::kMuted,
                    Align::Right);
    }
    for (const double seconds : time.ticks(12)) {
        const double x = time.at(seconds);
        canvas.line(x, area.y, x, area.bottom(), style::kGrid, 0.8);
        if (timeLabels) {
            canvas.text(x, area.bottom() + 14.0, tickText(seconds * 1000.0), kAxisSize,
                        style::kMuted, Align::Centre);
        }
    }
    canvas.clip(area);
    for (int input = 0; input < measurement.response().inputs(); ++input) {
        drawLevels(canvas, input);
    }
    canvas.unclip();
    canvas.frame(area, style::kFrame, 1.0);
    drawMarks(canvas);
}

void EchoPanel::drawSmall(Canvas& canvas, const std::string& name) const {
    canvas.fill(area, style::kBand);
    for (const double seconds : time.ticks(4)) {
        canvas.line(time.at(seconds), area.y, time.at(seconds), area.bottom(), style::kGrid, 0.7);
    }
    canvas.clip(area);
    for (int input = 0; input < measurement.response().inputs(); ++input) {
        drawLevels(canvas, input);
    }
    canvas.unclip();
    canvas.line(area.x, area.bottom(), area.right(), area.bottom(), style::kFrame, 0.8);
    canvas.text(area.right() - 4.0, area.y + 11.0, name, kSmallSize, style::kMuted, Align::Right);
}

} // namespace tvhost
