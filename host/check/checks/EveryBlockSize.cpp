#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

namespace tvhost::checks {

namespace {

constexpr double kRate = 48000.0;
constexpr int kLargest = 8192;
constexpr float kLevel = 0.25f;

} // namespace

void everyBlockSize(CheckRun& run) {
    CheckedEffect effect(run);
    effect.requireSound();
    std::vector<int> sizes;
    for (int size = 1; size <= 68; ++size) {
        sizes.push_back(size);
    }
    for (const int power : {128, 256, 512, 1024, 2048, 4096, kLargest}) {
        sizes.insert(sizes.end(), {power - 1, power, 1});
    }
    for (int i = 0; i < 20; ++i) {
        sizes.push_back(run.number(1, kLargest));
    }
    const auto look = [&](int largest, const std::vector<int>& inOrder) {
        int frames = 0;
        for (const int size : inOrder) {
            frames += size;
        }
        effect.start(kRate, largest);
        std::size_t next = 0;
        const Sound sound = noise(run, std::max(effect.inputCount(), 1), frames, kLevel);
        if (!isFinite(effect.render(sound, largest, [&] { return inOrder[next++]; }))) {
            run.finding("not finite", "it gives what is no number in blocks of up to " +
                                          std::to_string(largest) + " frames");
        }
        effect.stop();
    };
    run.doing("in blocks of 1 to 8192 frames in turn");
    look(kLargest, sizes);
    for (const int largest : {1, 7, 64, 1000}) {
        run.doing("told that " + std::to_string(largest) + " frames are the most");
        look(largest, std::vector<int>(largest == 1 ? 64 : 8, largest));
    }
}

} // namespace tvhost::checks
