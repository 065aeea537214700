// Sends a sound file through the chorus and draws how the delay sweeps.
#include <algorithm>
#include <cmath>
#include <memory>

#include "soundlib/ChorusUnitMaker.h"
#include "soundlib/examples/CommandLine.h"
#include "soundlib/examples/Picture.h"
#include "soundlib/examples/SoundFile.h"

namespace {

constexpr std::int32_t kBlockSize = 64; // frames; also the distance of the drawn points
constexpr double kSampleRate = 44100.0; // what the chorus is written for
constexpr double kLongestDelay = 441.0; // samples

struct Settings {
    float rate = 0.45f;
    float depth = 0.3f;
    float delay = 0.4f;
    float feedback = 0.2f;
    float wet = 0.6f;
};

using UnitPointer = std::unique_ptr<ChorusUnit, decltype(&destroyChorusUnit)>;

// Distance of the read position behind the write position, in milliseconds.
double currentDelay(const ChorusUnit& unit) {
    return 1000.0 * (unit.delaySmoother->output1 * kLongestDelay + unit.lfoValue) / kSampleRate;
}

// Processes `sound` in place and gives the delay over the time in seconds.
Picture::Points applyChorus(ChorusUnit& unit, Sound& sound) {
    Picture::Points sweep;
    const auto frames = static_cast<std::int32_t>(sound.left.size());
    for (std::int32_t start = 0; start < frames; start += kBlockSize) {
        float* channels[] = {sound.left.data() + start, sound.right.data() + start};
        process(&unit, channels, channels, std::min(kBlockSize, frames - start));
        sweep.emplace_back((start + kBlockSize) / kSampleRate, currentDelay(unit));
    }
    return sweep;
}

void drawSweep(const std::string& path, const Picture::Points& sweep, const Settings& settings) {
    Axis x{0.0, std::max(1.0, sweep.empty() ? 0.0 : sweep.back().first), {}, "seconds"};
    const int step = x.high > 20.0 ? 10 : 1;
    for (int second = 0; second <= static_cast<int>(x.high); second += step) {
        x.marks.emplace_back(second, std::to_string(second));
    }
    const double base = 10.0 * static_cast<double>(settings.delay);
    const double longest = base + 10.0 * static_cast<double>(settings.depth);
    Axis y{0.0, 5.0 * std::floor(longest / 5.0 + 1.0), {}, "delay in milliseconds"};
    for (int milliseconds = 0; milliseconds <= static_cast<int>(y.high); milliseconds += 5) {
        y.marks.emplace_back(milliseconds, std::to_string(milliseconds));
    }
    Picture picture(760, 360);
    picture.panel({64, 40, 672, 264}, "Delay of the chorus while the file runs", x, y);
    picture.dashed({{x.low, base}, {x.high, base}}, colours::kOrange);
    picture.curve(sweep, colours::kBlue);
    picture.caption(480, 32, "base delay", colours::kOrange);
    picture.caption(580, 32, "with the sweep on top", colours::kBlue);
    picture.write(path);
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Sends a mono or stereo sound file through the chorus.", "chorus_file");
    std::string input;
    std::string output;
    std::string picture;
    Settings settings;
    app.add_option("input", input, "sound file to read")->required();
    app.add_option("output", output, "16-bit WAV file to write")->required();
    const auto control = [&](const char* name, float& value, const char* text) {
        app.add_option(name, value, text)->check(CLI::Range(0.0f, 1.0f))->capture_default_str();
    };
    control("--rate", settings.rate, "speed of the sweep");
    control("--depth", settings.depth, "width of the sweep");
    control("--delay", settings.delay, "base delay");
    control("--feedback", settings.feedback, "gain back into the lines");
    control("--wet", settings.wet, "gain of the delayed signal");
    app.add_option("--picture", picture, "PNG file for a drawing of the sweep");
    return runExample(app, argc, argv, [&] {
        Sound sound = readSound(input);
        const UnitPointer unit(makeChorusUnit(), destroyChorusUnit);
        unit->setRate(settings.rate);
        unit->setDepth(settings.depth);
        unit->setDelay(settings.delay);
        unit->setFeedback(settings.feedback);
        unit->setWet(settings.wet);
        const Picture::Points sweep = applyChorus(*unit, sound);
        writeSound(output, sound);
        if (!picture.empty()) {
            drawSweep(picture, sweep, settings);
        }
    });
}
