// Two channels, each times "Gain". Three programs that can be named from afar.
#include "tests/host/plugins/TestEffect.h"

#include <cstdio>

namespace {

class Gain : public TestEffect {
public:
    explicit Gain(audioMasterCallback master) : TestEffect(master, 2, 2, 2, 3) {}

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        static const char* const names[] = {"Unity", "Half", "808"};
        static const float gains[] = {1.0f, 0.5f, 0.25f};
        switch (opcode) {
        case effGetEffectName:
            return give(ptr, "Gain");
        case effGetVendorString:
            return give(ptr, "Testers");
        case effGetProductString:
            return give(ptr, "Gain for Tests");
        case effGetVendorVersion:
            return 1234;
        case effGetPlugCategory:
            return kPlugCategEffect;
        case effGetTailSize:
            return 1;
        case effCanBeAutomated:
            return index == 0;
        case effGetParamName:
            return give(ptr, index == 0 ? "Gain" : "Shift = Up");
        case effGetParamLabel:
            return give(ptr, index == 0 ? "times" : "");
        case effGetParamDisplay: {
            char text[32];
            std::snprintf(text, sizeof text, "%.2f", static_cast<double>(values_[index]));
            return give(ptr, text);
        }
        case effGetProgram:
            return program_;
        case effSetProgram:
            program_ = static_cast<int>(value);
            values_[0] = gains[program_];
            return 0;
        case effGetProgramNameIndexed:
            return index >= 0 && index < 3 ? give(ptr, names[index]) : 0;
        default:
            return TestEffect::dispatch(opcode, index, value, ptr, opt);
        }
    }
    void setParameter(int index, float value) override { values_[index] = value; }
    float getParameter(int index) override { return values_[index]; }
    void process(float** in, float** out, int frames) override {
        for (int c = 0; c < 2; ++c) {
            for (int i = 0; i < frames; ++i) {
                out[c][i] = in[c][i] * values_[0] + values_[1];
            }
        }
    }

private:
    int program_ = 0;
    float values_[2] = {1.0f, 0.0f};
};

} // namespace

EXPORT_EFFECT(Gain)
