// Takes memory in each block.
#include "tests/host/check/plugins/GoodEffect.h"

#include <cstdlib>

namespace {

class AllocatesInBlock : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        void* const memory = std::malloc(100);
        asm volatile("" : : "r"(memory) : "memory");
        std::free(memory);
        GoodEffect::process(in, out, frames);
    }
};

} // namespace

EXPORT_EFFECT(AllocatesInBlock)
