// What a block does to the memory that it is given.
#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <algorithm>

namespace tvhost::checks {

namespace {

constexpr double kRate = 48000.0;
constexpr int kLargest = 1024;
constexpr int kBlocks = 100;
constexpr float kLevel = 0.25f;

// Processes noise in blocks of many sizes, and hands buffers and frames over before and after each.
template <typename Prepare, typename Look>
void forBlocks(CheckRun& run, CheckedEffect& effect, const Prepare& prepare, const Look& look) {
    effect.start(kRate, kLargest);
    BlockBuffers buffers(effect.inputCount(), effect.outputCount(), kLargest);
    if (effect.isSynth()) {
        effect.playNote();
    }
    for (int i = 0; i < kBlocks && !run.hasFound(); ++i) {
        const int frames = i < kBlocks / 2 ? i + 1 : run.number(1, kLargest);
        for (int c = 0; c < effect.inputCount(); ++c) {
            std::generate_n(buffers.inputs()[c], frames,
                            [&] { return (2.0f * run.uniform() - 1.0f) * kLevel; });
        }
        prepare(buffers, frames);
        effect.process(buffers, frames);
        look(buffers, frames);
    }
}

} // namespace

void inputsUntouched(CheckRun& run) {
    CheckedEffect effect(run);
    effect.requireInput();
    Sound given;
    const auto copy = [](BlockBuffers& buffers, int frames) {
        Sound sound;
        for (int c = 0; c < buffers.inputCount(); ++c) {
            sound.emplace_back(buffers.inputs()[c], buffers.inputs()[c] + frames);
        }
        return sound;
    };
    forBlocks(
        run, effect, [&](BlockBuffers& buffers, int frames) { given = copy(buffers, frames); },
        [&](BlockBuffers& buffers, int frames) {
            if (copy(buffers, frames) != given) {
                run.finding("written", "it writes into its inputs, which lie apart from its "
                                       "outputs, in a block of " +
                                           std::to_string(frames) + " frames");
            }
        });
}

void staysInBlock(CheckRun& run) {
    CheckedEffect effect(run);
    effect.requireSound();
    forBlocks(
        run, effect,
        [](BlockBuffers& buffers, int frames) {
            buffers.fillOutputs(0.0f);
            buffers.markAround(frames);
        },
        [&](BlockBuffers& buffers, int frames) {
            if (!buffers.marksStand(frames)) {
                run.finding("beside", "it writes before or behind a block of " +
                                          std::to_string(frames) + " frames");
            }
        });
}

void replacesOutputs(CheckRun& run) {
    CheckedEffect effect(run);
    effect.requireSound();
    constexpr float kOld = 123456.789f;
    constexpr float kNoSound = 10000.0f;
    forBlocks(
        run, effect, [](BlockBuffers& buffers, int) { buffers.fillOutputs(kOld); },
        [&](BlockBuffers& buffers, int frames) {
            for (int c = 0; c < buffers.outputCount(); ++c) {
                const float* const output = buffers.outputs()[c];
                const auto isOld = [](float sample) { return sample > kNoSound; };
                const auto found = std::find_if(output, output + frames, isOld);
                if (found == output + frames) {
                    continue;
                }
                run.finding(*found == kOld ? "unwritten" : "added",
                            std::string(*found == kOld ? "it leaves" : "it adds to") +
                                " what stood in output " + std::to_string(c) + " at frame " +
                                std::to_string(found - output) + " of " + std::to_string(frames));
                return;
            }
        });
}

} // namespace tvhost::checks
