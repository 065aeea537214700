// Passes sound through and once, some time after it has begun, takes half a second over a block.
#include "tests/host/plugins/TestEffect.h"

#include <chrono>
#include <thread>

namespace {

constexpr int kAwakeFrames = 20000;

class Sleepy : public TestEffect {
public:
    explicit Sleepy(audioMasterCallback master) : TestEffect(master, 2, 2, 0, 0) {}

protected:
    void process(float** in, float** out, int frames) override {
        TestEffect::process(in, out, frames);
        const bool awake = frames_ < kAwakeFrames;
        frames_ += frames;
        if (awake && frames_ >= kAwakeFrames) {
            std::this_thread::sleep_for(std::chrono::milliseconds(500));
        }
    }

private:
    int frames_ = 0;
};

} // namespace

EXPORT_EFFECT(Sleepy)
