// Writes a short phrase of plucked strings, for the other examples to work on.
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "soundlib/examples/CommandLine.h"
#include "soundlib/examples/SoundFile.h"

namespace {

constexpr int kSampleRate = 44100;

// Adds a string of the given pitch: noise going round in a loop that dulls it.
void pluck(Sound& sound, std::size_t start, double frequency, float pan) {
    std::vector<float> loop(static_cast<std::size_t>(kSampleRate / frequency));
    std::uint32_t noise = 1;
    for (float& value : loop) {
        noise = noise * 1664525u + 1013904223u;
        value = static_cast<float>(noise >> 8) / 8388608.0f - 1.0f;
    }
    for (std::size_t i = start; i < sound.left.size(); ++i) {
        float& value = loop[(i - start) % loop.size()];
        const float next = loop[(i - start + 1) % loop.size()];
        sound.left[i] += (1.0f - pan) * value;
        sound.right[i] += pan * value;
        value = 0.498f * (value + next);
    }
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Writes a short phrase of plucked strings as a 16-bit stereo WAV file.",
                 "make_phrase");
    std::string output;
    app.add_option("output", output, "WAV file to write")->required();
    return runExample(app, argc, argv, [&] {
        constexpr std::array<double, 8> kNotes = {110.0,  164.81, 220.0,  277.18,
                                                  329.63, 440.0,  554.37, 659.26};
        constexpr std::size_t kSeconds = 4;
        Sound sound{kSampleRate, std::vector<float>(kSeconds * kSampleRate),
                    std::vector<float>(kSeconds * kSampleRate)};
        for (std::size_t note = 0; note < kNotes.size(); ++note) {
            pluck(sound, note * kSampleRate / 4, kNotes[note], note % 2 == 0 ? 0.4f : 0.6f);
        }
        writeSound(output, sound);
    });
}
