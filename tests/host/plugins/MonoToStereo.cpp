// One channel in; it comes out on the left, and inverted at half level on the right.
#include "tests/host/plugins/TestEffect.h"

namespace {

class MonoToStereo : public TestEffect {
public:
    explicit MonoToStereo(audioMasterCallback master) : TestEffect(master, 1, 2, 0, 0) {}

protected:
    void process(float** in, float** out, int frames) override {
        for (int i = 0; i < frames; ++i) {
            out[0][i] = in[0][i];
            out[1][i] = -0.5f * in[0][i];
        }
    }
};

} // namespace

EXPORT_EFFECT(MonoToStereo)
