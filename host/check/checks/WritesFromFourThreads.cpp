#include "host/check/CheckedEffect.h"
#include "host/check/checks/Checks.h"

#include <algorithm>
#include <atomic>
#include <thread>

namespace tvhost::checks {

namespace {

constexpr double kRate = 48000.0;
constexpr int kBlock = 256;
constexpr int kFrames = 48000;
constexpr int kThreads = 4;

} // namespace

void writesFromFourThreads(CheckRun& run) {
    CheckedEffect effect(run);
    effect.requireSound();
    effect.requireParameters();
    effect.start(kRate, kBlock);
    std::atomic<bool> stopped{false};
    std::vector<std::thread> writers;
    writers.reserve(kThreads);
    for (int i = 0; i < kThreads; ++i) {
        writers.emplace_back([&, seed = run.random()()] {
            std::minstd_rand random(static_cast<std::uint_fast32_t>(seed));
            const auto count = static_cast<unsigned>(effect.parameterCount());
            while (!stopped) {
                effect.setParameter(static_cast<int>(random() % count),
                                    static_cast<float>(random() % 1000) / 1000.0f);
                effect.parameter(static_cast<int>(random() % count));
            }
        });
    }
    const Sound input = noise(run, std::max(effect.inputCount(), 1), kFrames, 0.25f);
    effect.render(input, kBlock);
    stopped = true;
    for (std::thread& writer : writers) {
        writer.join();
    }
}

} // namespace tvhost::checks
