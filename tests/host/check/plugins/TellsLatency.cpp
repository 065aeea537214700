// Tells a latency that it does not have.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class TellsLatency : public GoodEffect {
public:
    explicit TellsLatency(audioMasterCallback master) : GoodEffect(master) {
        record.initialDelay = 512;
    }
};

} // namespace

EXPORT_EFFECT(TellsLatency)
