// Leaves its window behind.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class LeaksWindow : public GoodEffect {
public:
    explicit LeaksWindow(audioMasterCallback master) : GoodEffect(master) {
        destroysWindow = false;
    }
};

} // namespace

EXPORT_EFFECT(LeaksWindow)
