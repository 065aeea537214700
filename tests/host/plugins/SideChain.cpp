// Three inputs, the last for a side-chain, and four outputs: the three inputs and their sum.
#include "tests/host/plugins/TestEffect.h"

namespace {

class SideChain : public TestEffect {
public:
    explicit SideChain(audioMasterCallback master) : TestEffect(master, 3, 4, 0, 0) {}

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        return opcode == effGetEffectName ? give(ptr, "Side Chain")
                                          : TestEffect::dispatch(opcode, index, value, ptr, opt);
    }
    void process(float** in, float** out, int frames) override {
        for (int i = 0; i < frames; ++i) {
            const float sum = in[0][i] + in[1][i] + in[2][i];
            for (int c = 0; c < 3; ++c) {
                out[c][i] = in[c][i];
            }
            out[3][i] = sum;
        }
    }
};

} // namespace

EXPORT_EFFECT(SideChain)
