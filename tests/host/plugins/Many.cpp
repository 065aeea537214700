// 150 programs and 60 parameters, with an echo whose time depends on the program. Writes over its
// input, as effects may.
#include "tests/host/plugins/TestEffect.h"

#include <vector>

namespace {

class Many : public TestEffect {
public:
    explicit Many(audioMasterCallback master) : TestEffect(master, 2, 2, 60, 150) {}

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        switch (opcode) {
        case effGetEffectName:
            return give(ptr, "Many");
        case effGetParamName:
            return give(ptr, "Parameter " + std::to_string(index));
        case effGetProgram:
            return program_;
        case effSetProgram:
            program_ = static_cast<int>(value);
            return 0;
        case effGetProgramNameIndexed:
            return give(ptr, "A program with quite a long name, number " + std::to_string(index));
        default:
            return TestEffect::dispatch(opcode, index, value, ptr, opt);
        }
    }
    void process(float** in, float** out, int frames) override {
        const std::size_t length = 200 + 100 * static_cast<std::size_t>(program_);
        for (std::vector<float>& line : lines_) {
            line.resize(length);
        }
        for (int i = 0; i < frames; ++i) {
            for (int c = 0; c < 2; ++c) {
                std::swap(lines_[c][at_], in[c][i]);
                out[c][i] = in[c][i];
            }
            at_ = (at_ + 1) % length;
        }
    }

private:
    int program_ = 0;
    std::vector<float> lines_[2];
    std::size_t at_ = 0;
};

} // namespace

EXPORT_EFFECT(Many)
