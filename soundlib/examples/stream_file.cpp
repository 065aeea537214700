// Plays a 16-bit WAV file through the streaming reader, compares every sample with what libsndfile
// reads, and draws which buffer played what.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>

#include "soundlib/NotWavAlert.h"
#include "soundlib/WavPlayer.h"
#include "soundlib/examples/CommandLine.h"
#include "soundlib/examples/Picture.h"
#include "soundlib/examples/SoundFile.h"
#include "soundlib/examples/UserError.h"

namespace {

constexpr std::int32_t kBlockSize = 512; // frames

// A piece of the file: the frame at which it began to play.
using PieceStarts = std::vector<double>;

struct Playback {
    Sound sound;
    PieceStarts starts;
    std::int32_t lateFrames;
};

Playback play(WavPlayer& player) {
    Playback playback{{player.format().sampleRate, {}, {}}, {}, 0};
    std::vector<float> left(kBlockSize);
    std::vector<float> right(kBlockSize);
    float* outputs[] = {left.data(), right.data()};
    while (player.isPlaying()) {
        player.render(outputs, kBlockSize);
        const std::int32_t late = player.reader().streamCounterD - playback.lateFrames;
        playback.lateFrames += late;
        playback.sound.left.insert(playback.sound.left.end(), left.begin(), left.end() - late);
        playback.sound.right.insert(playback.sound.right.end(), right.begin(), right.end() - late);
        while (static_cast<std::int32_t>(playback.starts.size()) <=
               player.reader().streamCounterB) {
            const double played = static_cast<double>(playback.starts.size()) * wavReadLength;
            playback.starts.push_back(played / player.format().channels);
        }
        if (late > 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1)); // nothing else to do
        }
    }
    // The last block was filled up with silence.
    const auto frames = static_cast<std::size_t>(player.format().frames);
    playback.sound.left.resize(std::min(frames, playback.sound.left.size()));
    playback.sound.right.resize(std::min(frames, playback.sound.right.size()));
    return playback;
}

// The highest and lowest sample of each of some columns.
Picture::Points envelope(const std::vector<float>& samples, std::size_t from, std::size_t to) {
    constexpr std::size_t kPerColumn = 128;
    Picture::Points points;
    for (std::size_t start = from; start < to; start += kPerColumn) {
        const auto first = samples.begin() + static_cast<std::ptrdiff_t>(start);
        const auto last =
            samples.begin() + static_cast<std::ptrdiff_t>(std::min(start + kPerColumn, to));
        const auto [low, high] = std::minmax_element(first, last);
        points.emplace_back(start, *low);
        points.emplace_back(start, *high);
    }
    return points;
}

void drawBuffers(const std::string& path, const Playback& playback) {
    const std::vector<float>& samples = playback.sound.left;
    const auto frames = static_cast<double>(samples.size());
    Axis x{0.0, std::max(1.0, frames), {}, ""};
    Picture picture(760, 420);
    const Axis level{-1.0, 1.0, {{-1, "-1"}, {0, "0"}, {1, "1"}}, "left channel"};
    picture.panel({110, 40, 626, 180}, "What is heard, by the buffer that it came from", x, level);
    const auto shade = [](std::size_t piece) {
        return piece % 2 == 0 ? colours::kBlue : colours::kOrange;
    };
    const std::size_t count = playback.starts.size();
    const auto startOf = [&](std::size_t piece) {
        return piece < count ? std::min(frames, playback.starts[piece]) : frames;
    };
    for (std::size_t piece = 0; piece < count; ++piece) {
        picture.curve(envelope(samples, static_cast<std::size_t>(startOf(piece)),
                               static_cast<std::size_t>(startOf(piece + 1))),
                      shade(piece), 1.0);
    }

    const double rate = playback.sound.sampleRate;
    const double step = frames > 20.0 * rate ? 10.0 : 1.0;
    for (double second = 0.0; second * rate <= x.high; second += step) {
        x.marks.emplace_back(second * rate, std::to_string(static_cast<int>(second)));
    }
    x.title = "seconds";
    const Axis buffers{0.0, 2.0, {{0.5, "secondBuffer"}, {1.5, "firstBuffer"}}, ""};
    picture.panel({110, 270, 626, 100},
                  "What each buffer holds: solid while it plays, pale while it waits", x, buffers);
    for (std::size_t piece = 0; piece < count; ++piece) {
        const double bottom = piece % 2 == 0 ? 1.15 : 0.15;
        const double top = bottom + 0.7;
        // A buffer is loaded again as soon as it has been played.
        const double loaded = piece < 2 ? 0.0 : startOf(piece - 1);
        Colour pale = shade(piece);
        picture.bar(loaded, startOf(piece), bottom, top, {1.0, 1.0, 1.0});
        pale.alpha = 0.25;
        picture.bar(loaded, startOf(piece), bottom, top, pale);
        picture.bar(startOf(piece), startOf(piece + 1), bottom, top, shade(piece));
        if (count <= 40) {
            picture.label((startOf(piece) + startOf(piece + 1)) / 2.0, bottom + 0.35,
                          std::to_string(piece), {1.0, 1.0, 1.0});
        }
    }
    picture.write(path);
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Plays a 16-bit WAV file through two buffers and compares it with libsndfile.",
                 "stream_file");
    std::string input;
    std::string picture;
    bool background = false;
    bool alert = false;
    app.add_option("input", input, "mono or stereo 16-bit WAV file to read")->required();
    app.add_flag("--background", background, "load on a thread of its own");
    app.add_flag("--alert", alert, "also show the alert when it isn't a 16-bit WAV file");
    app.add_option("--picture", picture, "PNG file for a drawing of the buffers");
    return runExample(app, argc, argv, [&] {
        WavPlayer player;
        const WavHeaderError error = player.open(input, background ? WavPlayer::Loading::kOwnThread
                                                                   : WavPlayer::Loading::kInRender);
        if (alert && isNotWavAlertDue(error)) {
            showNotWavAlert(input);
        }
        if (error != WavHeaderError::kNone) {
            throw UserError(input + ": " + describe(error));
        }
        const Playback playback = play(player);
        const Sound expected = readSound(input);
        if (playback.sound.left != expected.left || playback.sound.right != expected.right) {
            throw UserError(input + ": is read differently by libsndfile");
        }
        std::printf("%zu frames through %zu pieces, identical to libsndfile\n",
                    playback.sound.left.size(), playback.starts.size());
        if (!picture.empty()) {
            drawBuffers(picture, playback);
        }
    });
}
