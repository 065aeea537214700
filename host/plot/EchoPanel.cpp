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
constexpr double kSameTime = 2.0;

} // namespace

EchoPanel::EchoPanel(const EffectMeasurement& measurement, int output, const Rectangle& area,
                     double seconds, double top, double floor, double labelRoom)
    : measurement_(measurement), output_(output), area_(area),
      // The impulse itself is not to lie on the frame.
      time_(-0.012 * seconds, seconds, area_.x, area_.right()),
      level_(floor, top, area_.bottom(), area_.y + labelRoom) {}

double EchoPanel::xOf(const Echo& echo) const {
    return time_.at(static_cast<double>(echo.frame) / measurement_.response().sampleRate());
}

double EchoPanel::yOf(const Echo& echo) const {
    return level_.within(decibels(echo.level));
}

// The highest level in each column, drawn as a column that stands on the floor.
void EchoPanel::drawLevels(Canvas& canvas, int input) const {
    const std::vector<float>& path = measurement_.response().path(input, output_);
    const double rate = measurement_.response().sampleRate();
    const auto frameAt = [&](double x) {
        const double frame = std::ceil(time_.valueAt(x) * rate);
        return std::clamp(static_cast<std::int64_t>(frame), std::int64_t{0},
                          static_cast<std::int64_t>(path.size()));
    };
    const auto floorY = level_.at(level_.from());
    const int columns = static_cast<int>(area_.width / kColumnWidth);
    for (int column = 0; column < columns; ++column) {
        const double x = area_.x + column * kColumnWidth;
        float highest = 0.0f;
        const std::int64_t end = frameAt(x + kColumnWidth);
        for (std::int64_t frame = frameAt(x); frame < end; ++frame) {
            highest = std::max(highest, std::abs(path[static_cast<std::size_t>(frame)]));
        }
        const double decibel = decibels(static_cast<double>(highest));
        if (decibel <= level_.from()) {
            continue;
        }
        const double y = level_.at(decibel);
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
    const double rate = measurement_.response().sampleRate();
    std::vector<Mark> marks;
    for (int input = 0; input < measurement_.response().inputs(); ++input) {
        const EchoAnalysis& echoes = measurement_.echoes(input, output_);
        for (const Echo& echo : echoes.arrivals()) {
            if (static_cast<double>(echo.frame) / rate <= time_.to() &&
                decibels(echo.level) >= level_.from()) {
                marks.push_back(
                    {input, &echo, echoes.hasDirect() && &echo == &echoes.arrivals().front()});
            }
        }
    }
    std::stable_sort(marks.begin(), marks.end(),
                     [](const Mark& a, const Mark& b) { return a.echo->frame < b.echo->frame; });

    double labelsEnd = -kLabelGap;
    for (auto mark = marks.begin(); mark != marks.end();) {
        // What comes from both inputs at once has one label with both levels.
        const double x = xOf(*mark->echo);
        const auto end = std::find_if(mark, marks.end(), [&](const Mark& other) {
            return xOf(*other.echo) > x + kSameTime || other.direct != mark->direct ||
                   (other.input == mark->input && other.echo != mark->echo);
        });
        double y = area_.bottom();
        std::string howLoud;
        for (auto one = mark; one != end; ++one) {
            canvas.dot(xOf(*one->echo), yOf(*one->echo), 3.2, style::inputColour(one->input),
                       style::kPaper);
            y = std::min(y, yOf(*one->echo));
            howLoud += (one == mark ? "" : " / ") + levelText(one->echo->level);
        }
        const std::string when =
            mark->direct ? "direct"
                         : millisecondText(static_cast<double>(mark->echo->frame) / rate);
        mark = end;
        const double width = std::max(canvas.textWidth(when, kLabelSize, Weight::kBold),
                                      canvas.textWidth(howLoud, kLabelSize));
        const double left = std::clamp(x - width / 2.0, area_.x + 3.0, area_.right() - width - 3.0);
        if (left < labelsEnd + kLabelGap) {
            continue;
        }
        labelsEnd = left + width;
        const double centre = left + width / 2.0;
        canvas.text(centre, y - 18.0, when, kLabelSize, style::kInk, Align::kCentre, Weight::kBold);
        canvas.text(centre, y - 7.5, howLoud, kLabelSize, style::kMuted, Align::kCentre);
    }
}

void EchoPanel::draw(Canvas& canvas, bool timeLabels) const {
    canvas.fill(area_, style::kPaper);
    for (const double decibel : level_.ticks(4)) {
        const double y = level_.at(decibel);
        canvas.line(area_.x, y, area_.right(), y, style::kGrid, 0.8);
        canvas.text(area_.x - 7.0, y + 3.4, tickText(decibel), kAxisSize, style::kMuted,
                    Align::kRight);
    }
    for (const double seconds : time_.ticks(12)) {
        const double x = time_.at(seconds);
        canvas.line(x, area_.y, x, area_.bottom(), style::kGrid, 0.8);
        if (timeLabels) {
            canvas.text(x, area_.bottom() + 14.0, tickText(seconds * 1000.0), kAxisSize,
                        style::kMuted, Align::kCentre);
        }
    }
    canvas.clip(area_);
    for (int input = 0; input < measurement_.response().inputs(); ++input) {
        drawLevels(canvas, input);
    }
    canvas.unclip();
    canvas.frame(area_, style::kFrame, 1.0);
    drawMarks(canvas);
}

void EchoPanel::drawSmall(Canvas& canvas, const std::string& name) const {
    canvas.fill(area_, style::kBand);
    for (const double seconds : time_.ticks(4)) {
        canvas.line(time_.at(seconds), area_.y, time_.at(seconds), area_.bottom(), style::kGrid,
                    0.7);
    }
    canvas.clip(area_);
    for (int input = 0; input < measurement_.response().inputs(); ++input) {
        drawLevels(canvas, input);
    }
    canvas.unclip();
    canvas.line(area_.x, area_.bottom(), area_.right(), area_.bottom(), style::kFrame, 0.8);
    canvas.text(area_.right() - 4.0, area_.y + 11.0, name, kSmallSize, style::kMuted,
                Align::kRight);
}

} // namespace tvhost
