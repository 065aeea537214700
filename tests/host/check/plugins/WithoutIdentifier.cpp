// Has no identifier.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class WithoutIdentifier : public GoodEffect {
public:
    explicit WithoutIdentifier(audioMasterCallback master) : GoodEffect(master) {
        record.uniqueID = 0;
    }
};

} // namespace

EXPORT_EFFECT(WithoutIdentifier)
