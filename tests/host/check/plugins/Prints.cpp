// Prints when it is opened.
#include "tests/host/check/plugins/GoodEffect.h"

#include <cstdio>

namespace {

class Prints : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        if (opcode == effOpen) {
            std::puts("Prints: ready");
        }
        return GoodEffect::dispatch(opcode, index, value, ptr, opt);
    }
};

} // namespace

EXPORT_EFFECT(Prints)
