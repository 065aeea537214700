// Never comes back from its second block of sound.
#include "tests/host/plugins/TestEffect.h"

#include <unistd.h>

namespace {

class Stuck : public TestEffect {
public:
    explicit Stuck(audioMasterCallback master) : TestEffect(master, 2, 2, 0, 0) {}

protected:
    void process(float** in, float** out, int frames) override {
        TestEffect::process(in, out, frames);
        if (frames > 0 && ++blocks_ == 2) {
            for (;;) {
                pause();
            }
        }
    }

private:
    int blocks_ = 0;
};

} // namespace

EXPORT_EFFECT(Stuck)
