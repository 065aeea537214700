#include "host/base/NumberText.h"
#include "host/base/UserError.h"
#include "host/measure/EffectMeasurement.h"
#include "host/plot/EchoPanel.h"
#include "host/plot/PlotAxis.h"
#include "host/plot/PlotStyle.h"
#include "host/plot/ProgramPage.h"
#include "host/plot/ProgramSheet.h"
#include "host/plot/ResponsePanel.h"
#include "tests/host/TestPlugin.h"
#include "tests/host/Tvhost.h"
#include "tests/support/TemporaryFolder.h"

#include <cairo.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <librsvg/rsvg.h>

#include <cmath>
#include <memory>

using namespace tvhost;
using testing::HasSubstr;

namespace {

constexpr int kSquare = 8; // pixels

// A page of white pixels, one a unit.
class Page {
public:
    Page(int width, int height)
        : surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height)),
          context_(cairo_create(surface_)) {
        canvas().fill({0.0, 0.0, static_cast<double>(width), static_cast<double>(height)},
                      style::kPaper);
    }
    explicit Page(const std::string& png)
        : surface_(cairo_image_surface_create_from_png(png.c_str())),
          context_(cairo_create(surface_)) {}
    ~Page() {
        cairo_destroy(context_);
        cairo_surface_destroy(surface_);
    }
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;

    Canvas canvas() { return Canvas(context_); }
    cairo_t* cairo() { return context_; }
    int width() const { return cairo_image_surface_get_width(surface_); }
    int height() const { return cairo_image_surface_get_height(surface_); }

    struct Pixel {
        int red;
        int green;
        int blue;
    };
    Pixel at(int x, int y) {
        cairo_surface_flush(surface_);
        const unsigned char* row =
            cairo_image_surface_get_data(surface_) + y * cairo_image_surface_get_stride(surface_);
        return {row[4 * x + 2], row[4 * x + 1], row[4 * x]};
    }
    bool isPaper(int x, int y) {
        const Pixel pixel = at(x, y);
        return pixel.red == 255 && pixel.green == 255 && pixel.blue == 255;
    }
    // The mean green of a square.
    double shade(int x, int y) {
        int sum = 0;
        for (int dy = 0; dy < kSquare; ++dy) {
            for (int dx = 0; dx < kSquare; ++dx) {
                sum += at(x + dx, y + dy).green;
            }
        }
        return static_cast<double>(sum) / (kSquare * kSquare);
    }
    // The share of pixels that are not paper.
    double ink() {
        int count = 0;
        for (int y = 0; y < height(); ++y) {
            for (int x = 0; x < width(); ++x) {
                count += isPaper(x, y) ? 0 : 1;
            }
        }
        return static_cast<double>(count) / (width() * height());
    }

private:
    cairo_surface_t* surface_;
    cairo_t* context_;
};

bool isColour(const Page::Pixel& pixel, const Colour& colour) {
    const auto near = [](int a, double b) { return std::abs(a - b * 255.0) < 12.0; };
    return near(pixel.red, colour.red) && near(pixel.green, colour.green) &&
           near(pixel.blue, colour.blue);
}

// The picture in `svg`, drawn by another program than the one that wrote it.
std::unique_ptr<Page> drawn(const std::string& svg, int width, int height) {
    auto page = std::make_unique<Page>(width, height);
    GError* error = nullptr;
    RsvgHandle* const handle = rsvg_handle_new_from_file(svg.c_str(), &error);
    if (!handle) {
        ADD_FAILURE() << error->message;
        g_error_free(error);
        return page;
    }
    const RsvgRectangle viewport{0.0, 0.0, static_cast<double>(width), static_cast<double>(height)};
    EXPECT_TRUE(rsvg_handle_render_document(handle, page->cairo(), &viewport, &error));
    g_object_unref(handle);
    return page;
}

ProcessResult plot(const std::string& out, const std::string& plugin,
                   std::vector<std::string> more = {}) {
    std::vector<std::string> arguments = {"plot", out, "--plugin", testPlugin(plugin)};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return runTvhost(arguments);
}

} // namespace

TEST(PlotAxis, PlacesValues) {
    const PlotAxis straight(0.0, 10.0, 100.0, 200.0);
    EXPECT_DOUBLE_EQ(straight.at(2.5), 125.0);
    EXPECT_DOUBLE_EQ(straight.valueAt(125.0), 2.5);
    EXPECT_DOUBLE_EQ(straight.at(20.0), 300.0);
    EXPECT_DOUBLE_EQ(straight.within(20.0), 200.0);
    EXPECT_DOUBLE_EQ(straight.within(-5.0), 100.0);
    const PlotAxis logarithmic(20.0, 20000.0, 0.0, 300.0, PlotAxis::Scale::kLogarithmic);
    EXPECT_DOUBLE_EQ(logarithmic.at(200.0), 100.0);
    EXPECT_NEAR(logarithmic.valueAt(200.0), 2000.0, 1e-9);
    const PlotAxis upwards(-60.0, 0.0, 150.0, 30.0);
    EXPECT_DOUBLE_EQ(upwards.at(-30.0), 90.0);
}

TEST(PlotAxis, TicksAreRoundAndFew) {
    EXPECT_EQ(PlotAxis(-60.0, 0.0, 0.0, 1.0).ticks(4),
              (std::vector<double>{-60.0, -40.0, -20.0, 0.0}));
    EXPECT_THAT(
        PlotAxis(0.0, 0.34, 0.0, 1.0).ticks(12),
        testing::Pointwise(testing::DoubleNear(1e-12), {0.0, 0.05, 0.1, 0.15, 0.2, 0.25, 0.3}));
    for (int step = 0; step < 59; ++step) {
        const double range = 0.001 * std::pow(1.37, step);
        for (const int most : {2, 4, 7, 12}) {
            const std::size_t count = PlotAxis(0.0, range, 0.0, 1.0).ticks(most).size();
            EXPECT_LE(count, static_cast<std::size_t>(most) + 1) << range;
            EXPECT_GE(count, 1u) << range;
        }
    }
}

TEST(PlotAxis, TextsAreShort) {
    EXPECT_EQ(tickText(-20.0), "\u221220");
    EXPECT_EQ(tickText(0.25), "0.25");
    EXPECT_EQ(hertzText(500.0), "500");
    EXPECT_EQ(hertzText(20000.0), "20k");
    EXPECT_EQ(levelText(0.5), "\u22126.0 dB");
    EXPECT_EQ(millisecondText(0.0799546), "80.0 ms");
}

TEST(EffectMeasurement, FindsTheEchoesOfAPluginItDoesNotKnow) {
    const EffectMeasurement measurement(loadTestPlugin("Delay"), {});
    EXPECT_EQ(measurement.effectName(), "Delay");
    EXPECT_EQ(measurement.programNumber(), 0);
    EXPECT_EQ(measurement.programName(), "Short");
    for (int input = 0; input < 2; ++input) {
        const EchoAnalysis& straight = measurement.echoes(input, input);
        EXPECT_TRUE(straight.hasDirect());
        EXPECT_EQ(straight.echoCount(), 0u);
        const EchoAnalysis& crossed = measurement.echoes(input, 1 - input);
        EXPECT_FALSE(crossed.hasDirect());
        // Halves down to -120 dB.
        ASSERT_EQ(crossed.echoCount(), 20u);
        for (std::size_t i = 0; i < 20; ++i) {
            EXPECT_EQ(crossed.echo(i).frame, 4410 * static_cast<std::int64_t>(i + 1));
            EXPECT_NEAR(crossed.echo(i).level, std::pow(0.5, static_cast<double>(i)), 1e-9);
        }
    }
    const EffectMeasurement::Path path = measurement.leadingPath();
    EXPECT_NE(path.input, path.output);
}

TEST(EffectMeasurement, TakesSettingsAndTellsThem) {
    const EffectMeasurement measurement(loadTestPlugin("Delay"),
                                        {"Long", {"Time=0.25", "Feedback=0"}});
    const EchoAnalysis& echoes = measurement.echoes(0, 0);
    ASSERT_EQ(echoes.echoCount(), 1u);
    EXPECT_EQ(echoes.echo(0).frame, 11025);
    ASSERT_EQ(measurement.parameters().size(), 5u);
    EXPECT_EQ(measurement.parameters()[0].name, "Time");
    EXPECT_EQ(measurement.parameters()[0].value, "0.25");
    EXPECT_EQ(measurement.parameters()[0].words, "11025 samples");
    EXPECT_EQ(measurement.parameters()[1].words, "");
}

TEST(EffectMeasurement, LeadsAlongTheDirectSoundWhereThereIsNoEcho) {
    const EffectMeasurement measurement(loadTestPlugin("MonoToStereo"), {});
    EXPECT_EQ(measurement.response().inputs(), 1);
    EXPECT_EQ(measurement.response().outputs(), 2);
    EXPECT_EQ(measurement.leadingPath().output, 0);
    EXPECT_EQ(measurement.programNumber(), -1);
}

TEST(EffectMeasurement, KeepsAnEndlessResponseToTwelveSeconds) {
    const EffectMeasurement measurement(loadTestPlugin("Delay"), {"Forever", {}});
    EXPECT_NEAR(static_cast<double>(measurement.response().path(0, 0).size()) / 44100.0, 12.0, 0.1);
    EXPECT_EQ(measurement.echoes(0, 0).echoCount(), 60u);
}

TEST(EffectMeasurement, IsNotFooledByAnEffectThatWritesOverItsInput) {
    const EffectMeasurement measurement(loadTestPlugin("Many"), {"3", {}});
    ASSERT_EQ(measurement.echoes(1, 1).echoCount(), 1u);
    EXPECT_EQ(measurement.echoes(1, 1).echo(0).frame, 500);
    EXPECT_EQ(measurement.echoes(1, 0).echoCount(), 0u);
}

TEST(EffectMeasurement, RefusesAnEffectThatGivesNoNumbers) {
    EXPECT_THROW(EffectMeasurement(loadTestPlugin("NotANumber"), {}), UserError);
}

TEST(EchoPanel, MarksEachEchoInTheColourOfItsInput) {
    const EffectMeasurement measurement(loadTestPlugin("Delay"), {});
    Page page(800, 200);
    Canvas canvas = page.canvas();
    const EchoPanel left(measurement, 0, {50.0, 10.0, 700.0, 160.0}, 1.0, 0.0, -60.0, 30.0);
    left.draw(canvas, true);
    // The left output hears the left input directly and the right input's echoes.
    const auto dot = [&](const Echo& echo) {
        return page.at(static_cast<int>(left.xOf(echo)), static_cast<int>(left.yOf(echo)));
    };
    EXPECT_TRUE(isColour(dot(measurement.echoes(0, 0).arrivals().front()), style::kLeftInput));
    const EchoAnalysis& echoes = measurement.echoes(1, 0);
    for (std::size_t i = 0; i < 9; ++i) {
        EXPECT_TRUE(isColour(dot(echoes.echo(i)), style::kRightInput)) << i;
        // Each stands on the floor; between them nothing does.
        const int x = static_cast<int>(std::round(left.xOf(echoes.echo(i))));
        const auto standsAt = [&](int from, int to) {
            for (int at = from; at <= to; ++at) {
                const Page::Pixel pixel = page.at(at, 165);
                if (pixel.red - pixel.blue > 60) {
                    return true;
                }
            }
            return false;
        };
        EXPECT_TRUE(standsAt(x - 1, x + 1)) << i;
        EXPECT_FALSE(standsAt(x + 10, x + 30)) << i;
    }
}

// What comes from both inputs at once has one label, with both levels.
TEST(EchoPanel, JoinsTheLabelsOfWhatComesAtOnce) {
    const EffectMeasurement measurement(loadTestPlugin("Merging"), {});
    const Rectangle area{50.0, 10.0, 700.0, 160.0};
    const EchoPanel panel(measurement, 0, area, 1.0, 0.0, -60.0, 30.0);
    Page page(800, 200);
    Canvas canvas = page.canvas();
    panel.draw(canvas, false);

    constexpr double kLabel = 9.0;
    Page label(800, 200);
    Canvas pen = label.canvas();
    const Echo& louder = measurement.echoes(0, 0).echo(0);
    ASSERT_EQ(measurement.echoes(1, 0).echo(0).frame, louder.frame);
    const double x = panel.xOf(louder);
    const double y = panel.yOf(louder);
    pen.text(x, y - 18.0, "100.0 ms", kLabel, style::kInk, Align::kCentre, Weight::kBold);
    const std::string levels = "\u22126.0 dB / \u221212.0 dB";
    pen.text(x, y - 7.5, levels, kLabel, style::kMuted, Align::kCentre);

    const int half = static_cast<int>(pen.textWidth(levels, kLabel) / 2.0) + 6;
    int dark = 0;
    int missed = 0;
    int added = 0;
    for (int row = static_cast<int>(y) - 28; row < static_cast<int>(y) - 6; ++row) {
        for (int column = static_cast<int>(x) - half; column < static_cast<int>(x) + half;
             ++column) {
            // Edges look different over a line of the grid.
            const int expected = label.at(column, row).green;
            const int drawn = page.at(column, row).green;
            dark += expected < 150 ? 1 : 0;
            missed += expected < 150 && drawn > 200 ? 1 : 0;
            added += expected > 200 && drawn < 150 ? 1 : 0;
        }
    }
    EXPECT_GT(dark, 100);
    EXPECT_LT(missed, dark / 50);
    EXPECT_LT(added, dark / 50);
}

TEST(EchoPanel, PlacesTimeAndLevelOnTheirScales) {
    const EffectMeasurement measurement(loadTestPlugin("Delay"), {});
    const EchoPanel panel(measurement, 1, {50.0, 10.0, 700.0, 160.0}, 1.0, 0.0, -60.0, 30.0);
    const EchoAnalysis& echoes = measurement.echoes(0, 1);
    const double tenth = panel.xOf(echoes.echo(1)) - panel.xOf(echoes.echo(0));
    EXPECT_NEAR(tenth, 700.0 / 1.012 / 10.0, 1e-6);
    const double sixDecibels = panel.yOf(echoes.echo(1)) - panel.yOf(echoes.echo(0));
    EXPECT_NEAR(sixDecibels, 6.0206 / 60.0 * 130.0, 1e-3);
    EXPECT_NEAR(panel.yOf(echoes.echo(0)), 40.0, 1e-6);
}

TEST(ResponsePanel, ShowsTheLossOfEachRepeat) {
    // Each pass through the loop darkens once more; at the top the first echo is untouched.
    const EffectMeasurement bright(loadTestPlugin("Delay"), {"", {"Feedback=1"}});
    EXPECT_NEAR(ResponsePanel(bright, {0.0, 0.0, 100.0, 100.0}).peak(), 0.0, 0.01);
    const EffectMeasurement quiet(loadTestPlugin("Delay"), {"", {"Dry=0.25", "Dark=0.5"}});
    EXPECT_NEAR(ResponsePanel(quiet, {0.0, 0.0, 100.0, 100.0}).peak(), 0.0, 0.01);
    const EffectMeasurement half(loadTestPlugin("Gain"), {"Half", {}});
    EXPECT_NEAR(ResponsePanel(half, {0.0, 0.0, 100.0, 100.0}).peak(), -6.02, 0.01);
}

TEST(ProgramPage, GivesTheTimeThatTheEchoesNeed) {
    const EffectMeasurement measurement(loadTestPlugin("Delay"), {});
    // Echo 10 of halves is the last above -60 dB.
    EXPECT_NEAR(secondsToShow(measurement, -60.0, 100), 1.06, 1e-6);
    EXPECT_NEAR(secondsToShow(measurement, -60.0, 3), 0.318, 1e-6);
    EXPECT_NEAR(secondsToShow(EffectMeasurement(loadTestPlugin("Gain"), {}), -60.0, 3), 0.2, 1e-6);
    EXPECT_EQ(levelAbove(measurement), 0.0);
}

TEST(PlotCommand, WritesAPngOfThePage) {
    TemporaryFolder folder;
    const ProcessResult result = plot(folder.file("page.png"), "Delay");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "");
    Page page(folder.file("page.png"));
    const EffectMeasurement measurement(loadTestPlugin("Delay"), {});
    EXPECT_EQ(page.width(), 2000);
    EXPECT_EQ(page.height(),
              static_cast<int>(std::lround(2.0 * ProgramPage(measurement).height())));
    EXPECT_GT(page.ink(), 0.01);
    EXPECT_EQ(folder.entries(), std::vector<std::string>{"page.png"});
}

TEST(PlotCommand, WritesTheSamePictureAsSvg) {
    TemporaryFolder folder;
    for (const std::vector<std::string>& more :
         {std::vector<std::string>{}, std::vector<std::string>{"--all"}}) {
        ASSERT_EQ(plot(folder.file("p.png"), "Delay", more).status, 0);
        ASSERT_EQ(plot(folder.file("p.svg"), "Delay", more).status, 0);
        EXPECT_THAT(readFile(folder.file("p.svg")), testing::StartsWith("<?xml"));
        EXPECT_THAT(readFile(folder.file("p.svg")), HasSubstr("</svg>"));
        Page png(folder.file("p.png"));
        const auto svg = drawn(folder.file("p.svg"), png.width(), png.height());
        // Programs smooth edges differently, so what is compared is the shade of small squares.
        const int squares = (png.width() / kSquare) * (png.height() / kSquare);
        double difference = 0.0;
        double toBlank = 0.0;
        for (int y = 0; y + kSquare <= png.height(); y += kSquare) {
            for (int x = 0; x + kSquare <= png.width(); x += kSquare) {
                difference += std::abs(png.shade(x, y) - svg->shade(x, y));
                toBlank += 255.0 - png.shade(x, y);
            }
        }
        EXPECT_LT(difference, 0.15 * toBlank);
        EXPECT_GT(toBlank / squares, 4.0);
    }
}

TEST(PlotCommand, DrawsEveryKindOfEffect) {
    TemporaryFolder folder;
    for (const char* plugin : {"Gain", "Mono", "MonoToStereo", "Many", "Rude"}) {
        const ProcessResult result = plot(folder.file("page.png"), plugin);
        EXPECT_EQ(result.status, 0) << plugin << result.err;
        EXPECT_EQ(result.err, "") << plugin;
        EXPECT_GT(Page(folder.file("page.png")).ink(), 0.005) << plugin;
    }
}

TEST(PlotCommand, DrawsDifferentProgramsDifferently) {
    TemporaryFolder folder;
    ASSERT_EQ(plot(folder.file("0.svg"), "Delay").status, 0);
    ASSERT_EQ(plot(folder.file("1.svg"), "Delay", {"--program", "Long"}).status, 0);
    ASSERT_EQ(plot(folder.file("2.svg"), "Delay", {"--set", "Feedback=0.51"}).status, 0);
    ASSERT_EQ(plot(folder.file("3.svg"), "Delay").status, 0);
    EXPECT_NE(readFile(folder.file("0.svg")), readFile(folder.file("1.svg")));
    EXPECT_NE(readFile(folder.file("0.svg")), readFile(folder.file("2.svg")));
    EXPECT_EQ(readFile(folder.file("0.svg")), readFile(folder.file("3.svg")));
}

TEST(PlotCommand, DrawsAnyNumberOfProgramsOnOneSheet) {
    TemporaryFolder folder;
    for (const char* plugin : {"Journal", "Gain", "Delay", "Many"}) {
        const ProcessResult result = plot(folder.file("all.png"), plugin, {"--all"});
        EXPECT_EQ(result.status, 0) << plugin << result.err;
        Page page(folder.file("all.png"));
        EXPECT_GT(page.width(), 1000) << plugin;
        EXPECT_LE(std::max(page.width(), page.height()), 30000) << plugin;
        EXPECT_GT(page.ink(), 0.02) << plugin;
    }
}

TEST(ProgramSheet, GrowsWithItsProgramsButKeepsItsShape) {
    EffectMeasurement any(loadTestPlugin("Many"), {});
    double width = 0.0;
    for (int count = 1; count <= 40; ++count) {
        const ProgramSheet sheet(count, [&](const ProgramSheet::Take& take) {
            for (int program = 0; program < count; ++program) {
                take(program, any);
            }
        });
        EXPECT_GE(sheet.width(), width) << count;
        width = sheet.width();
        if (count >= 9) {
            EXPECT_LT(sheet.height(), 1.6 * sheet.width()) << count;
        }
    }
}

TEST(EffectMeasurement, TellsLatencyFromAnEcho) {
    const EffectMeasurement late(loadTestPlugin("Late"), {});
    EXPECT_EQ(late.response().latency(), 100);
    EXPECT_TRUE(late.echoes(0, 0).hasDirect());
    EXPECT_EQ(late.echoes(0, 0).echoCount(), 0u);
    EXPECT_EQ(EffectMeasurement(loadTestPlugin("Late"), {"", {"More=1"}}).response().latency(),
              300);
}

TEST(EffectMeasurement, WaitsForEchoesAsFarApartAsTheLongestGap) {
    const EffectSettings far{"Long", {}};
    EXPECT_EQ(EffectMeasurement(loadTestPlugin("Delay"), far, 0.8).echoes(0, 0).echoCount(), 0u);
    EXPECT_GT(EffectMeasurement(loadTestPlugin("Delay"), far, 1.0).echoes(0, 0).echoCount(), 5u);
}

TEST(EffectMeasurement, TakesTheFirstTwoOfManyChannels) {
    const EffectMeasurement surround(loadTestPlugin("Surround"), {});
    EXPECT_EQ(surround.response().inputs(), 2);
    EXPECT_EQ(surround.response().outputs(), 2);
    EXPECT_EQ(surround.response().allInputs(), 6);
    EXPECT_TRUE(surround.echoes(1, 1).hasDirect());
    EXPECT_FALSE(surround.echoes(0, 1).hasDirect());
}

// 24 programs, three instances for each, twice: that would be 2.3 GB.
TEST(PlotCommand, LargeBanksTakeNoMoreMemory) {
    if (*TVDELAY_SANITIZERS != 0) {
        GTEST_SKIP() << "a sanitizer's own memory can't be counted";
    }
    TemporaryFolder folder;
    Process::Options options;
    options.mostMemory = 500'000'000;
    const ProcessResult result = runTvhost(
        {"plot", folder.file("all.png"), "--plugin", testPlugin("Hoarding"), "--all"}, options);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(folder.entries(), std::vector<std::string>{"all.png"});
}

TEST(PlotCommand, SaysWhichProgramCrashes) {
    TemporaryFolder folder;
    const ProcessResult result = plot(folder.file("all.png"), "Crashing", {"--all"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, HasSubstr("crashed"));
    EXPECT_EQ(folder.entries(), std::vector<std::string>{});
}
