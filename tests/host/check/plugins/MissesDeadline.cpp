// Takes much longer for a block of 64 frames now and then.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

constexpr int kLong = 10000000; // turns, several milliseconds on any machine

class MissesDeadline : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        GoodEffect::process(in, out, frames);
        if (frames != 64 || ++blocks_ % 100 != 0) {
            return;
        }
        for (int i = 0; i < kLong; ++i) {
            turns_ = i;
        }
    }

private:
    int blocks_ = 0;
    volatile int turns_ = 0;
};

} // namespace

EXPORT_EFFECT(MissesDeadline)
