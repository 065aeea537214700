// Makes no more than a hundred at a time.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

int living = 0;

class FewInstances : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

    ~FewInstances() override { --living; }
};

} // namespace

extern "C" __attribute__((visibility("default"))) AEffect* VSTPluginMain(audioMasterCallback host) {
    if (living == 100) {
        return nullptr;
    }
    ++living;
    return &(new FewInstances(host))->record;
}
