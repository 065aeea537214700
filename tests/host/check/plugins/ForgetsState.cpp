// Leaves out the last parameter when it takes the chunk of a bank while it is on.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class ForgetsState : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    bool takeChunk(bool bank, const char* data, std::size_t size) override {
        const float before = getParameter(kParameters - 1);
        const bool taken = GoodEffect::takeChunk(bank, data, size);
        if (bank && isOn()) {
            setParameter(kParameters - 1, before);
        }
        return taken;
    }
};

} // namespace

EXPORT_EFFECT(ForgetsState)
