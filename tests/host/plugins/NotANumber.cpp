// Passes a thousand frames of sound through, after 512 of silence, and then gives what is no
// number.
#include "tests/host/plugins/TestEffect.h"

#include <limits>

namespace {

class NotANumber : public TestEffect {
public:
    explicit NotANumber(audioMasterCallback master) : TestEffect(master, 2, 2, 0, 0) {}

protected:
    void process(float** in, float** out, int frames) override {
        for (int i = 0; i < frames; ++i, ++done_) {
            for (int c = 0; c < 2; ++c) {
                out[c][i] = done_ < 1512 ? in[c][i] : std::numeric_limits<float>::quiet_NaN();
            }
        }
    }

private:
    int done_ = 0;
};

} // namespace

EXPORT_EFFECT(NotANumber)
