// One channel in, one out, unchanged. No parameters, no programs, no name of its own.
#include "tests/host/plugins/TestEffect.h"

namespace {

class Mono : public TestEffect {
public:
    explicit Mono(audioMasterCallback master) : TestEffect(master, 1, 1, 0, 0) {}
};

} // namespace

EXPORT_EFFECT(Mono)
