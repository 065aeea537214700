// Ends the whole program in its second block of sound.
#include "tests/host/plugins/TestEffect.h"

#include <cstdlib>

namespace {

class Crashing : public TestEffect {
public:
    explicit Crashing(audioMasterCallback master) : TestEffect(master, 2, 2, 0, 2) {}

protected:
    void process(float** in, float** out, int frames) override {
        TestEffect::process(in, out, frames);
        if (frames > 0 && ++blocks_ == 2) {
            std::abort();
        }
    }

private:
    int blocks_ = 0;
};

} // namespace

EXPORT_EFFECT(Crashing)
