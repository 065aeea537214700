// Answers both inputs on both outputs 0.1 s later, the first at a half and the second at a quarter
// of its level.
#include "tests/host/plugins/TestEffect.h"

#include <vector>

namespace {

class Merging : public TestEffect {
public:
    explicit Merging(audioMasterCallback master) : TestEffect(master, 2, 2, 0, 0) {}

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        if (opcode == effMainsChanged) {
            line_.assign(static_cast<std::size_t>(sampleRate / 10.0f), 0.0f);
            at_ = 0;
        }
        return TestEffect::dispatch(opcode, index, value, ptr, opt);
    }
    void process(float** in, float** out, int frames) override {
        for (int i = 0; i < frames; ++i) {
            const float late = line_[at_];
            line_[at_] = 0.5f * in[0][i] + 0.25f * in[1][i];
            at_ = (at_ + 1) % line_.size();
            out[0][i] = out[1][i] = late;
        }
    }

private:
    std::vector<float> line_;
    std::size_t at_ = 0;
};

} // namespace

EXPORT_EFFECT(Merging)
