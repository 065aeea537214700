// Has a loop that gains in its second program.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class Grows : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        if (opcode == effMainsChanged) {
            state_ = 0.0f;
        }
        return GoodEffect::dispatch(opcode, index, value, ptr, opt);
    }
    void process(float** in, float** out, int frames) override {
        GoodEffect::process(in, out, frames);
        for (int i = 0; i < frames && program() == 1; ++i) {
            state_ = 1.0002f * state_ + 1e-3f * in[0][i];
            out[0][i] += state_;
        }
    }

private:
    float state_ = 0.0f;
};

} // namespace

EXPORT_EFFECT(Grows)
