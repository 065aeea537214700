#include "host/plot/ProgramSheet.h"

#include "host/base/NumberText.h"
#include "host/plot/EchoPanel.h"
#include "host/plot/PlotStyle.h"
#include "host/plot/ProgramPage.h"
#include "host/plot/ResponsePanel.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tvhost {

namespace {

constexpr double kMargin = 40.0;
constexpr double kHeading = 104.0;
constexpr double kFooter = 20.0;
constexpr double kCellWidth = 308.0;
constexpr double kCellHeight = 158.0;
constexpr double kColumnGap = 26.0;
constexpr double kRowGap = 20.0;
constexpr double kEchoWidth = 196.0;
constexpr double kResponseLeft = 216.0;
constexpr double kPanelTop = 32.0;
constexpr double kPanelsHeight = 104.0;
constexpr double kPanelGap = 6.0;
constexpr double kFloor = -60.0;
constexpr double kLongestShown = 2.0;
constexpr int kFewestColumns = 4;

} // namespace

ProgramSheet::ProgramSheet(int programs, MeasureAll measureAll)
    : programs_(programs), measureAll_(std::move(measureAll)) {
    // About as wide as high when there are many, never wider than there is to show.
    const int square = static_cast<int>(
        std::ceil(std::sqrt(programs_ * (kCellHeight + kRowGap) / (kCellWidth + kColumnGap))));
    columns_ = std::min(std::max(square, kFewestColumns), programs_);
    rows_ = (programs_ + columns_ - 1) / columns_;
    measureAll_([this](int, const EffectMeasurement& measurement) {
        seconds_ = std::max(seconds_, secondsToShow(measurement, kFloor, 1000));
        highestLevel_ = std::max(highestLevel_, levelAbove(measurement));
        highestGain_ = std::max(highestGain_, ResponsePanel(measurement, {0, 0, 1, 1}).peak());
    });
    seconds_ = std::min(seconds_, kLongestShown);
    highestGain_ = std::ceil(highestGain_ / 10.0) * 10.0;
}

// The heading needs the width of two cells.
double ProgramSheet::width() const {
    const int across = std::max(columns_, 2);
    return 2.0 * kMargin + across * kCellWidth + (across - 1) * kColumnGap;
}

double ProgramSheet::height() const {
    return kMargin + kHeading + rows_ * kCellHeight + (rows_ - 1) * kRowGap + kFooter + kMargin;
}

void ProgramSheet::drawHeading(Canvas& canvas, const EffectMeasurement& any) const {
    const ImpulseResponse& response = any.response();
    canvas.text(kMargin, kMargin + 20.0,
                any.effectName() + " \u2013 " + std::to_string(programs_) +
                    (programs_ == 1 ? " program" : " programs"),
                24.0, style::kInk, Align::kLeft, Weight::kBold);

    double x = kMargin;
    const double y = kMargin + 46.0;
    for (int input = 0; input < response.inputs(); ++input) {
        canvas.fill({x, y - 9.0, 10.0, 10.0}, style::inputColour(input));
        const std::string words =
            "impulse into the " + style::channelWords(input, response.allInputs(), "input");
        canvas.text(x + 16.0, y, words, 10.0, style::kInk);
        x += 16.0 + canvas.textWidth(words, 10.0) + 20.0;
    }
    const std::string outputs =
        response.outputs() == 2 ? "the left and the right output" : "the output";
    const std::string strips = "Left: highest sample at " + outputs + ", 0 to " +
                               tickText(seconds_ * 1000.0, 0) + " ms, " + tickText(kFloor) +
                               " to " + tickText(highestLevel_) + " dB.";
    const std::string curves =
        "Right: frequency response of the first echo (solid) and the fifth (dashed), 20 Hz to "
        "20 kHz, " +
        tickText(kFloor) + " to " + tickText(highestGain_) + " dB.";
    canvas.text(kMargin, y + 18.0, strips, 10.0, style::kMuted);
    canvas.text(kMargin, y + 33.0, curves, 10.0, style::kMuted);
}

void ProgramSheet::drawCell(Canvas& canvas, const EffectMeasurement& measurement, double x,
                            double y) const {
    const ImpulseResponse& response = measurement.response();
    const EffectMeasurement::Path path = measurement.leadingPath();
    const EchoAnalysis& echoes = measurement.echoes(path.input, path.output);

    const std::string number = std::to_string(measurement.programNumber());
    canvas.text(x, y + 10.0, number, 12.0, style::kMuted);
    const double nameLeft = x + canvas.textWidth(number, 12.0) + 7.0;
    canvas.text(
        nameLeft, y + 10.0,
        canvas.fitted(measurement.programName(), 12.0, Weight::kBold, x + kCellWidth - nameLeft),
        12.0, style::kInk, Align::kLeft, Weight::kBold);

    std::string summary = "no echoes";
    if (echoes.echoCount() > 0) {
        const Echo& first = echoes.echo(0);
        const double rate = response.sampleRate();
        summary = millisecondText(static_cast<double>(first.frame) / rate) + ", " +
                  levelText(first.level);
        if (echoes.echoCount() > 1) {
            summary += "; next " + levelText(echoes.echo(1).level);
        }
    }
    canvas.text(x, y + 25.0, summary, 9.5, style::kMuted);

    const int outputs = response.outputs();
    const double height = (kPanelsHeight - (outputs - 1) * kPanelGap) / outputs;
    for (int output = 0; output < outputs; ++output) {
        const Rectangle area{x, y + kPanelTop + output * (height + kPanelGap), kEchoWidth, height};
        EchoPanel(measurement, output, area, seconds_, highestLevel_, kFloor, 2.0)
            .drawSmall(canvas, outputs == 1  ? ""
                               : output == 0 ? "L"
                                             : "R");
    }
    const Rectangle area{x + kResponseLeft, y + kPanelTop, kCellWidth - kResponseLeft,
                         kPanelsHeight};
    ResponsePanel(measurement, area).drawSmall(canvas, kFloor, highestGain_);

    canvas.text(x, y + kPanelTop + kPanelsHeight + 12.0, "0", 8.5, style::kMuted);
    canvas.text(x + kEchoWidth, y + kPanelTop + kPanelsHeight + 12.0,
                tickText(seconds_ * 1000.0, 0) + " ms", 8.5, style::kMuted, Align::kRight);
    canvas.text(area.x, area.bottom() + 12.0, "20", 8.5, style::kMuted);
    canvas.text(area.right(), area.bottom() + 12.0, "20k Hz", 8.5, style::kMuted, Align::kRight);
}

void ProgramSheet::draw(Canvas& canvas) const {
    measureAll_([&](int program, const EffectMeasurement& measurement) {
        if (program == 0) {
            drawHeading(canvas, measurement);
        }
        const int column = program % columns_;
        const int row = program / columns_;
        drawCell(canvas, measurement, kMargin + column * (kCellWidth + kColumnGap),
                 kMargin + kHeading + row * (kCellHeight + kRowGap));
    });
}

} // namespace tvhost
