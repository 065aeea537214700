// Breaks when two threads write at a time.
#include "tests/host/check/plugins/GoodEffect.h"

#include <chrono>
#include <cstdlib>
#include <thread>

namespace {

class RacesOnWrites : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void setParameter(int index, float value) override {
        if (inside_.exchange(true)) {
            std::abort();
        }
        // Asleep, so that another thread comes in even where there are few processors.
        std::this_thread::sleep_for(std::chrono::microseconds(50));
        GoodEffect::setParameter(index, value);
        inside_ = false;
    }

private:
    std::atomic<bool> inside_{false};
};

} // namespace

EXPORT_EFFECT(RacesOnWrites)
