// The editor beside sound and in other threads than the effect.
#include "host/check/CheckedEffect.h"
#include "host/check/EditorStage.h"
#include "host/check/checks/Checks.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

namespace tvhost::checks {

namespace {

constexpr double kRate = 48000.0;
constexpr int kBlock = 256;
constexpr int kTimes = 3;
constexpr int kWhile = 200; // ms

} // namespace

void editorBesideAudio(CheckRun& run) {
    CheckedEffect effect(run);
    effect.requireSound();
    EditorStage stage(run, effect);
    effect.start(kRate, kBlock);
    std::atomic<bool> stopped{false};
    std::thread audio([&] {
        const Sound input = silence(1, 8 * kBlock);
        std::minstd_rand random;
        while (!stopped) {
            effect.render(input, kBlock);
            if (effect.parameterCount() > 0) {
                // As a host that plays automation.
                const auto count = static_cast<unsigned>(effect.parameterCount());
                effect.setParameter(static_cast<int>(random() % count),
                                    static_cast<float>(random() % 1000) / 1000.0f);
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    });
    for (int i = 0; i < kTimes; ++i) {
        stage.open();
        stage.idle(kWhile);
        stage.close();
    }
    stopped = true;
    audio.join();
}

void editorOnAnotherThread(CheckRun& run) {
    std::unique_ptr<CheckedEffect> effect;
    run.module();
    run.doing("made on a thread that loads");
    std::thread([&] { effect = std::make_unique<CheckedEffect>(run); }).join();
    run.doing("made on one thread, its editor opened on another");
    {
        EditorStage stage(run, *effect);
        stage.open();
        stage.idle(kWhile);
        run.doing("asked for its editor's size and its parameters from a third thread");
        std::thread([&] {
            stage.toldSize();
            effect->parameters();
            if (effect->parameterCount() > 0) {
                effect->setParameter(0, 0.5f);
            }
        }).join();
        stage.idle(kWhile);
    }
    run.doing("closed on another thread than it was made on");
}

} // namespace tvhost::checks
