// Shows its parameters in many ways: with a label, with a unit in the display, downwards, as a
// word.
#include "tests/host/plugins/TestEffect.h"

#include <cmath>
#include <cstdio>

namespace {

class Shower : public TestEffect {
public:
    explicit Shower(audioMasterCallback master) : TestEffect(master, 2, 2, 4, 0) {}

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        static const char* const names[] = {"Time", "Cut", "Gain", "Shape"};
        static const char* const labels[] = {"ms", "", "dB", ""};
        switch (opcode) {
        case effGetParamName:
            return give(ptr, names[index]);
        case effGetParamLabel:
            return give(ptr, labels[index]);
        case effGetParamDisplay:
            return give(ptr, display(index));
        default:
            return TestEffect::dispatch(opcode, index, value, ptr, opt);
        }
    }
    void setParameter(int index, float value) override { values_[index] = value; }
    float getParameter(int index) override { return values_[index]; }

private:
    std::string display(int index) const {
        const double value = static_cast<double>(values_[index]);
        const double hertz = 20000.0 * std::pow(0.001, value);
        char text[32];
        switch (index) {
        case 0:
            std::snprintf(text, sizeof text, "%.1f", 2000.0 * value);
            break;
        case 1:
            std::snprintf(text, sizeof text, hertz < 1000.0 ? "%.0f Hz" : "%.2f kHz",
                          hertz < 1000.0 ? hertz : hertz / 1000.0);
            break;
        case 2:
            std::snprintf(text, sizeof text, "%.1f", 60.0 * value - 48.0);
            break;
        default:
            return value < 1.0 / 3.0 ? "Sine" : value < 2.0 / 3.0 ? "Saw" : "Square";
        }
        return text;
    }

    float values_[4] = {};
};

} // namespace

EXPORT_EFFECT(Shower)
