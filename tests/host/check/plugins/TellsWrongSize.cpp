// Tells a larger editor than it opens.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class TellsWrongSize : public GoodEffect {
public:
    explicit TellsWrongSize(audioMasterCallback master) : GoodEffect(master) {
        rectangle.right = 300;
    }
};

} // namespace

EXPORT_EFFECT(TellsWrongSize)
