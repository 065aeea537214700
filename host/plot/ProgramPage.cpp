#include "host/plot/ProgramPage.h"

#include "host/base/NumberText.h"
#include "host/plot/EchoPanel.h"
#include "host/plot/PlotStyle.h"
#include "host/plot/ResponsePanel.h"

#include <algorithm>
#include <cmath>

namespace tvhost {

namespace {

constexpr double kMargin = 48.0;
constexpr double kPlotLeft = 78.0;
constexpr double kPlotRight = 1000.0 - kMargin;
constexpr double kParametersTop = kMargin + 66.0;
constexpr int kCellsPerRow = 9;
constexpr std::size_t kMostCells = 36;
constexpr double kCellHeight = 50.0;
constexpr double kEchoHeight = 150.0;
constexpr double kEchoGap = 14.0;
constexpr double kEchoHeading = 38.0;
constexpr double kResponseHeading = 70.0;
constexpr double kResponseHeight = 190.0;
constexpr double kFooter = 74.0;
constexpr double kHeadingSize = 13.0;

constexpr double kFloor = -60.0;
constexpr double kLevelStep = 20.0;
constexpr double kLabelRoom = 34.0;
constexpr std::size_t kMostEchoes = 10;

std::string capital(std::string text) {
    if (!text.empty() && text[0] >= 'a' && text[0] <= 'z') {
        text[0] = static_cast<char>(text[0] - 'a' + 'A');
    }
    return text;
}

// What the picture leaves out.
std::string remarks(const ImpulseResponse& response) {
    std::string text;
    if (response.latency() > 0) {
        const double seconds = static_cast<double>(response.latency()) / response.sampleRate();
        text += "; latency of " + std::to_string(response.latency()) + " samples, " +
                millisecondText(seconds) + ", taken off";
    }
    const auto partly = [&](int shown, int all, const char* what) {
        if (shown < all) {
            text += "; the first " + std::to_string(shown) + " of " + std::to_string(all) + what;
        }
    };
    partly(response.inputs(), response.allInputs(), " inputs");
    partly(response.outputs(), response.allOutputs(), " outputs");
    return text;
}

void drawHeading(Canvas& canvas, double y, const std::string& words, const std::string& note) {
    canvas.text(kMargin, y, words, kHeadingSize, style::kInk, Align::kLeft, Weight::kBold);
    canvas.text(kMargin + canvas.textWidth(words, kHeadingSize, Weight::kBold) + 10.0, y, note,
                10.0, style::kMuted);
}

} // namespace

double levelAbove(const EffectMeasurement& measurement) {
    double highest = 1.0;
    for (int in = 0; in < measurement.response().inputs(); ++in) {
        for (int out = 0; out < measurement.response().outputs(); ++out) {
            for (const Echo& echo : measurement.echoes(in, out).arrivals()) {
                highest = std::max(highest, echo.level);
            }
        }
    }
    return std::ceil(decibels(highest) / kLevelStep - 0.01) * kLevelStep;
}

double secondsToShow(const EffectMeasurement& measurement, double floor, std::size_t mostEchoes) {
    const ImpulseResponse& response = measurement.response();
    double last = 0.0;
    for (int in = 0; in < response.inputs(); ++in) {
        for (int out = 0; out < response.outputs(); ++out) {
            const EchoAnalysis& echoes = measurement.echoes(in, out);
            for (std::size_t i = 0; i < std::min(echoes.echoCount(), mostEchoes); ++i) {
                if (decibels(echoes.echo(i).level) >= floor) {
                    last = std::max(last, static_cast<double>(echoes.echo(i).frame) /
                                              response.sampleRate());
                }
            }
        }
    }
    return std::max(0.2, last * 1.06);
}

ProgramPage::ProgramPage(const EffectMeasurement& measurement) : measurement_(measurement) {}

int ProgramPage::parameterRows() const {
    const int cells = static_cast<int>(std::min(measurement_.parameters().size(), kMostCells));
    return (cells + kCellsPerRow - 1) / kCellsPerRow;
}

double ProgramPage::echoesTop() const {
    return kParametersTop + parameterRows() * kCellHeight + kEchoHeading;
}

double ProgramPage::responseTop() const {
    const int outputs = measurement_.response().outputs();
    return echoesTop() + outputs * kEchoHeight + (outputs - 1) * kEchoGap + kResponseHeading;
}

double ProgramPage::height() const {
    return responseTop() + kResponseHeight + kFooter;
}

void ProgramPage::drawTitle(Canvas& canvas) const {
    const std::string& program = measurement_.programName();
    const std::string title = program.empty() ? measurement_.effectName()
                                              : measurement_.effectName() + " \u2013 " + program;
    canvas.text(kMargin, kMargin + 20.0,
                canvas.fitted(title, 24.0, Weight::kBold, kPlotRight - kMargin), 24.0, style::kInk,
                Align::kLeft, Weight::kBold);
    std::string subtitle = measurement_.vendorName();
    if (measurement_.programNumber() >= 0) {
        subtitle += (subtitle.empty() ? "Program " : ", program ") +
                    std::to_string(measurement_.programNumber());
    }
    canvas.text(kMargin, kMargin + 40.0, subtitle, 11.0, style::kMuted);
}

void ProgramPage::drawParameters(Canvas& canvas) const {
    const auto& parameters = measurement_.parameters();
    const std::size_t shown = std::min(parameters.size(), kMostCells);
    const double cellWidth = (kPlotRight - kMargin) / kCellsPerRow;
    for (std::size_t i = 0; i < shown; ++i) {
        const double x = kMargin + cellWidth * static_cast<double>(i % kCellsPerRow);
        const std::size_t row = i / kCellsPerRow;
        const double top = kParametersTop + kCellHeight * static_cast<double>(row);
        const auto cell = [&](double down, const std::string& words, double size,
                              const Colour& colour, Weight weight) {
            canvas.text(x + 9.0, top + down, canvas.fitted(words, size, weight, cellWidth - 14.0),
                        size, colour, Align::kLeft, weight);
        };
        canvas.line(x + 0.5, top, x + 0.5, top + kCellHeight - 12.0, style::kFrame, 1.0);
        const bool more = i + 1 == shown && shown < parameters.size();
        if (more) {
            cell(9.0, "and " + std::to_string(parameters.size() - shown + 1) + " more", 9.5,
                 style::kMuted, Weight::kNormal);
            continue;
        }
        cell(9.0, parameters[i].name, 9.5, style::kMuted, Weight::kNormal);
        cell(24.0, parameters[i].value, 12.5, style::kInk, Weight::kBold);
        cell(36.0, parameters[i].words, 9.0, style::kMuted, Weight::kNormal);
    }
}

void ProgramPage::drawEchoes(Canvas& canvas) const {
    const ImpulseResponse& response = measurement_.response();
    double y = echoesTop();
    drawHeading(canvas, y - 10.0, "Impulse response", "highest sample");
    double x = kPlotRight;
    for (int input = response.inputs() - 1; input >= 0; --input) {
        const std::string words =
            "impulse into the " + style::channelWords(input, response.allInputs(), "input");
        canvas.text(x, y - 10.0, words, 10.0, style::kInk, Align::kRight);
        x -= canvas.textWidth(words, 10.0) + 7.0;
        canvas.fill({x - 10.0, y - 19.0, 10.0, 10.0}, style::inputColour(input));
        x -= 10.0 + 18.0;
    }

    const double seconds = secondsToShow(measurement_, kFloor, kMostEchoes);
    const double top = levelAbove(measurement_);
    for (int output = 0; output < response.outputs(); ++output) {
        const Rectangle area{kPlotLeft, y, kPlotRight - kPlotLeft, kEchoHeight};
        const bool last = output + 1 == response.outputs();
        EchoPanel(measurement_, output, area, seconds, top, kFloor, kLabelRoom).draw(canvas, last);
        canvas.uprightText(kMargin - 2.0, y + kEchoHeight / 2.0,
                           capital(style::channelWords(output, response.allOutputs(), "output")) +
                               ", dB",
                           10.0, style::kInk);
        y += kEchoHeight + (last ? 0.0 : kEchoGap);
    }
    canvas.text((kPlotLeft + kPlotRight) / 2.0, y + 30.0, "Time after the impulse, ms", 10.0,
                style::kInk, Align::kCentre);
}

void ProgramPage::drawResponse(Canvas& canvas) const {
    const ImpulseResponse& response = measurement_.response();
    const double y = responseTop();
    const EffectMeasurement::Path path = measurement_.leadingPath();
    const EchoAnalysis& echoes = measurement_.echoes(path.input, path.output);
    const std::string from = style::channelWords(path.input, response.allInputs(), "input");
    const std::string to = style::channelWords(path.output, response.allOutputs(), "output");
    std::string note = from + " to " + to;
    if (echoes.echoCount() == 0) {
        note += ", no echoes";
    } else if (echoes.echoCount() < 5) {
        note += ", no fifth echo above \u2212120 dB";
    }
    drawHeading(canvas, y - 10.0, "Frequency response", note);
    const Rectangle area{kPlotLeft, y, kPlotRight - kPlotLeft, kResponseHeight};
    ResponsePanel(measurement_, area).draw(canvas);
    canvas.uprightText(kMargin - 2.0, y + kResponseHeight / 2.0, "Gain, dB", 10.0, style::kInk);
    canvas.text((kPlotLeft + kPlotRight) / 2.0, y + kResponseHeight + 30.0, "Frequency, Hz", 10.0,
                style::kInk, Align::kCentre);
    canvas.text(kPlotRight, y + kResponseHeight + 52.0,
                "tvhost plot, one sample of 1.0 at " + shortNumber(response.sampleRate(), 0) +
                    " Hz into each input in turn" + remarks(response),
                9.0, style::kMuted, Align::kRight);
}

void ProgramPage::draw(Canvas& canvas) const {
    drawTitle(canvas);
    drawParameters(canvas);
    drawEchoes(canvas);
    drawResponse(canvas);
}

} // namespace tvhost
