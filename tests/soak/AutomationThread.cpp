#include "tests/soak/AutomationThread.h"

#include "tests/support/Dice.h"

#include <chrono>

namespace {

constexpr VstInt32 kFeedBack = 1;
constexpr float kMostFeedBack = 0.6f;

} // namespace

AutomationThread::AutomationThread(AEffect* effect, std::uint64_t seed)
    : effect_(effect), thread_([this, seed] { run(seed); }) {}

AutomationThread::~AutomationThread() {
    ending_ = true;
    thread_.join();
}

void AutomationThread::run(std::uint64_t seed) {
    Dice dice(seed);
    while (!ending_) {
        const auto index = static_cast<VstInt32>(dice.between(0, effect_->numParams - 1));
        const float most = index == kFeedBack ? kMostFeedBack : 1.0f;
        effect_->setParameter(effect_, index, dice.within(0.0f, most));
        ++writes_;
        std::this_thread::sleep_for(std::chrono::microseconds(dice.between(0, 800)));
    }
}
