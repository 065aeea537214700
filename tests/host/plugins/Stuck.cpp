// Never comes back from its second block. Then the file that STUCK_SIGN names is there.
#include "tests/host/plugins/TestEffect.h"

#include <cstdlib>
#include <fstream>

#include <unistd.h>

namespace {

class Stuck : public TestEffect {
public:
    explicit Stuck(audioMasterCallback master) : TestEffect(master, 2, 2, 0, 0) {}

protected:
    void process(float** in, float** out, int frames) override {
        TestEffect::process(in, out, frames);
        if (frames > 0 && ++blocks_ == 2) {
            if (const char* const path = std::getenv("STUCK_SIGN")) {
                std::ofstream(path).put('\n');
            }
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
