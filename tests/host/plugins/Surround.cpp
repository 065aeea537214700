// Six channels.
#include "tests/host/plugins/TestEffect.h"

namespace {

class Surround : public TestEffect {
public:
    explicit Surround(audioMasterCallback master) : TestEffect(master, 6, 6, 0, 0) {}
};

} // namespace

EXPORT_EFFECT(Surround)
