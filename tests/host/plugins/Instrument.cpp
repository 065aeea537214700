// Takes no sound in.
#include "tests/host/plugins/TestEffect.h"

namespace {

class Instrument : public TestEffect {
public:
    explicit Instrument(audioMasterCallback master) : TestEffect(master, 0, 2, 0, 0) {
        record.flags |= effFlagsIsSynth;
    }
};

} // namespace

EXPORT_EFFECT(Instrument)
