// Draws the responses of all seven filter types.
#include <array>

#include "soundlib/examples/CommandLine.h"
#include "soundlib/examples/FilterResponse.h"

namespace {

constexpr double kSampleRate = 44100.0;
constexpr double kCentre = 1000.0; // Hz

struct Panel {
    std::int32_t type;
    const char* title;
    bool hasGain; // drawn at three gains instead of three Qs
};

constexpr std::array<Panel, 7> kPanels = {{{0, "0  low-pass", false},
                                           {1, "1  high-pass", false},
                                           {2, "2  band-pass", false},
                                           {3, "3  notch", false},
                                           {4, "4  peak, Q 1", true},
                                           {5, "5  low shelf", true},
                                           {6, "6  high shelf", true}}};
constexpr std::array<double, 3> kQs = {0.5, 0.707, 3.0};
constexpr std::array<double, 3> kGains = {-12.0, 6.0, 12.0};
constexpr std::array<Colour, 3> kShades = {colours::kGreen, colours::kBlue, colours::kOrange};

constexpr double kColumnWidth = 300.0;
constexpr double kRowHeight = 230.0;

void drawLegend(Picture& picture, double x, double y) {
    for (std::size_t i = 0; i < kShades.size(); ++i) {
        const double line = y + 60.0 + 24.0 * static_cast<double>(i);
        picture.caption(x, line, i == 1 ? "Q 0.707" : i == 0 ? "Q 0.5" : "Q 3", kShades[i]);
        picture.caption(x + 90.0, line,
                        i == 1   ? "+6 dB"
                        : i == 0 ? "-12 dB"
                                 : "+12 dB",
                        kShades[i]);
    }
    picture.caption(x, y + 30.0, "Types 0 to 3", colours::kInk);
    picture.caption(x + 90.0, y + 30.0, "Types 4 to 6", colours::kInk);
    picture.caption(x, y + 144.0, "1 kHz at 44.1 kHz", colours::kInk);
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Draws the responses of the seven filter types.", "draw_filters");
    std::string output;
    app.add_option("output", output, "PNG file to write")->required();
    return runExample(app, argc, argv, [&] {
        const Axis x = frequencyAxis();
        Picture picture(1220, 500);
        for (std::size_t i = 0; i < kPanels.size(); ++i) {
            const Panel& panel = kPanels[i];
            const double left = 64.0 + kColumnWidth * static_cast<double>(i % 4);
            const double top = 40.0 + (kRowHeight + 14.0) * (i < 4 ? 0.0 : 1.0);
            picture.panel({left, top, kColumnWidth - 80.0, kRowHeight - 76.0}, panel.title, x,
                          panel.hasGain ? gainAxis(-15.0, 15.0, 5) : gainAxis(-40.0, 20.0, 10));
            for (std::size_t shade = 0; shade < kShades.size(); ++shade) {
                const BiquadDesigner filter(panel.type, kCentre / kSampleRate,
                                            panel.hasGain ? 1.0 : kQs[shade], kGains[shade]);
                picture.curve(designedCurve(filter, kSampleRate, x.low, x.high), kShades[shade]);
            }
        }
        drawLegend(picture, 64.0 + 3.0 * kColumnWidth, 40.0 + kRowHeight + 14.0);
        picture.write(output);
    });
}
