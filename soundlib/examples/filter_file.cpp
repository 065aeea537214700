// Filters a sound file and draws the filter's response, as designed and as measured.
#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>

#include "soundlib/BiquadRunner.h"
#include "soundlib/examples/CommandLine.h"
#include "soundlib/examples/FilterResponse.h"
#include "soundlib/examples/SoundFile.h"
#include "soundlib/examples/UserError.h"

namespace {

struct Settings {
    std::string type = "low-pass";
    double frequency = 1000.0; // Hz
    double q = 0.707;
    double gain = 6.0; // decibels
};

const std::map<std::string, std::int32_t> kTypes = {
    {"low-pass", 0}, {"high-pass", 1}, {"band-pass", 2}, {"notch", 3},
    {"peak", 4},     {"low-shelf", 5}, {"high-shelf", 6}};

// CLI11's own check passes NaN and answers with both ends of a double's range, digit by digit.
CLI::Validator aboveZero() {
    return {[](const std::string& text) {
                double value = 0.0;
                const bool isNumber = CLI::detail::lexical_cast(text, value);
                return isNumber && std::isfinite(value) && value > 0.0
                           ? std::string()
                           : std::string("must be a number above 0");
            },
            "ABOVE 0"};
}

std::string shortText(double value) {
    std::ostringstream text;
    text << value;
    return text.str();
}

void drawResponse(const std::string& path, const BiquadDesigner& filter, const Settings& settings,
                  int sampleRate) {
    Axis x = frequencyAxis();
    x.high = std::min(x.high, 0.499 * sampleRate);
    x.marks.erase(std::remove_if(x.marks.begin(), x.marks.end(),
                                 [&](const auto& mark) { return mark.first > x.high; }),
                  x.marks.end());
    Picture picture(640, 400);
    picture.panel({64, 40, 552, 304}, "Response of the " + settings.type, x,
                  gainAxis(-48.0, 24.0, 12));
    picture.curve(designedCurve(filter, sampleRate, x.low, x.high), colours::kBlue);
    picture.dots(measuredDots(filter, sampleRate, x.low, x.high), colours::kOrange);
    picture.caption(400, 32, "designed", colours::kBlue);
    picture.caption(480, 32, "measured with sines", colours::kOrange);
    picture.write(path);
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Filters a mono or stereo sound file.", "filter_file");
    std::string input;
    std::string output;
    std::string picture;
    Settings settings;
    app.add_option("input", input, "sound file to read")->required();
    app.add_option("output", output, "16-bit WAV file to write")->required();
    app.add_option("--type", settings.type)->check(CLI::IsMember(kTypes))->capture_default_str();
    app.add_option("--frequency", settings.frequency, "in Hz")
        ->check(aboveZero())
        ->capture_default_str();
    app.add_option("--q", settings.q, "quality factor; the shelves don't use it")
        ->check(aboveZero())
        ->capture_default_str();
    app.add_option("--gain", settings.gain, "in dB; of peak and shelves")
        ->check(CLI::Range(-60.0, 60.0))
        ->capture_default_str();
    app.add_option("--picture", picture, "PNG file for a drawing of the response");
    return runExample(app, argc, argv, [&] {
        Sound sound = readSound(input);
        if (settings.frequency >= 0.5 * sound.sampleRate) {
            throw UserError("--frequency " + shortText(settings.frequency) +
                            ": must be below half the sample rate of the file, " +
                            std::to_string(sound.sampleRate / 2) + " Hz");
        }
        const BiquadDesigner filter(kTypes.at(settings.type), settings.frequency / sound.sampleRate,
                                    settings.q, settings.gain);
        BiquadDesigner left = filter;
        BiquadDesigner right = filter;
        float* channels[] = {sound.left.data(), sound.right.data()};
        runBiquadPair(&left, &right, channels, channels,
                      static_cast<std::int32_t>(sound.left.size()));
        writeSound(output, sound);
        if (!picture.empty()) {
            drawResponse(picture, filter, settings, sound.sampleRate);
        }
    });
}
