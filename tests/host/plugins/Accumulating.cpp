// Can only add to its output.
#include "tests/host/plugins/TestEffect.h"

namespace {

class Accumulating : public TestEffect {
public:
    explicit Accumulating(audioMasterCallback master) : TestEffect(master, 2, 2, 0, 0) {
        record.flags = 0;
        record.process = record.processReplacing;
        record.processReplacing = nullptr;
    }
};

} // namespace

EXPORT_EFFECT(Accumulating)
