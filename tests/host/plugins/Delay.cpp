// A feedback delay of up to one second whose echoes are known exactly: echo n comes after n times
// Delay seconds with a level of Feedback to the power of n - 1, darkened n times by a one-pole
// low-pass with the coefficient 1 - Dark. Crossed above a half, dry signal by Dry. Names only its
// current program.
#include "tests/host/plugins/TestEffect.h"

#include <cmath>
#include <vector>

namespace {

enum { kTime, kFeedback, kCross, kDry, kDark, kCount };

class Delay : public TestEffect {
public:
    explicit Delay(audioMasterCallback master) : TestEffect(master, 2, 2, kCount, 3) { select(0); }

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        static const char* const parameterNames[] = {"Time", "Feedback", "Cross", "Dry", "Dark"};
        static const char* const programNames[] = {"Short", "Long", "Forever"};
        switch (opcode) {
        case effGetEffectName:
            return give(ptr, "Delay");
        case effGetParamName:
            return give(ptr, parameterNames[index]);
        case effGetParamDisplay:
            return give(ptr, index == kTime ? std::to_string(length()) : "");
        case effGetParamLabel:
            return give(ptr, index == kTime ? "samples" : "");
        case effGetProgram:
            return program_;
        case effSetProgram:
            select(static_cast<int>(value));
            return 0;
        case effGetProgramName:
            return give(ptr, programNames[program_]);
        case effMainsChanged:
            clear();
            return 0;
        default:
            return TestEffect::dispatch(opcode, index, value, ptr, opt);
        }
    }
    void setParameter(int index, float value) override {
        values_[index] = value;
        if (index == kTime) {
            clear();
        }
    }
    float getParameter(int index) override { return values_[index]; }
    void process(float** in, float** out, int frames) override {
        const int size = length();
        for (int i = 0; i < frames; ++i) {
            for (int c = 0; c < 2; ++c) {
                poles_[c] += (1.0f - values_[kDark]) * (lines_[c][at_] - poles_[c]);
                taps_[c] = poles_[c];
                lines_[c][at_] = in[c][i] + values_[kFeedback] * taps_[c];
            }
            const bool cross = values_[kCross] > 0.5f;
            for (int c = 0; c < 2; ++c) {
                out[c][i] = in[c][i] * values_[kDry] + taps_[cross ? 1 - c : c];
            }
            at_ = (at_ + 1) % size;
        }
    }

private:
    int length() const {
        return std::max(1, static_cast<int>(std::lround(values_[kTime] * sampleRate)));
    }
    void clear() {
        for (std::vector<float>& line : lines_) {
            line.assign(200000, 0.0f);
        }
        poles_[0] = poles_[1] = 0.0f;
        at_ = 0;
    }
    void select(int index) {
        static const float settings[][kCount] = {{0.1f, 0.5f, 1.0f, 1.0f, 0.0f},
                                                 {0.9f, 0.25f, 0.0f, 0.0f, 0.0f},
                                                 {0.2f, 1.0f, 0.0f, 1.0f, 0.0f}};
        program_ = index;
        std::copy(settings[index], settings[index] + kCount, values_);
        clear();
    }

    int program_ = 0;
    float values_[kCount] = {};
    std::vector<float> lines_[2];
    float poles_[2] = {};
    float taps_[2] = {};
    int at_ = 0;
};

} // namespace

EXPORT_EFFECT(Delay)
