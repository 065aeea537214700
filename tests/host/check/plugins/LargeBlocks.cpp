// Has room for blocks of 4096 frames, whatever it was told.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class LargeBlocks : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        room_.at(static_cast<std::size_t>(frames) - 1) = 0.0f;
        GoodEffect::process(in, out, frames);
    }

private:
    std::vector<float> room_ = std::vector<float>(4096);
};

} // namespace

EXPORT_EFFECT(LargeBlocks)
