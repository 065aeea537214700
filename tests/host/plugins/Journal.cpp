// Keeps what a host does in the order it does it, and what the host answered to questions that came
// before and after the record existed. effVendorSpecific gives the std::string it
// is written to. Like effects that
// take up a rate only when they process, it resets its parameter then.
#include "plugin/vst2/Records.h"
#include "tests/host/plugins/TestEffect.h"

#include <string>

namespace {

constexpr VstInt32 kTransportPlaying = 1 << 1;

std::string& journal() {
    static std::string text;
    return text;
}

class Journal : public TestEffect {
public:
    explicit Journal(audioMasterCallback master) : TestEffect(master, 2, 2, 1, 1) {
        journal() = "rate while made " +
                    std::to_string(host(&record, audioMasterGetSampleRate, 0, 0, nullptr, 0.0f));
    }
    ~Journal() override { journal() += ", gone"; }

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        switch (opcode) {
        case effOpen:
            note("open");
            return 0;
        case effClose:
            note("close");
            return 0;
        case effSetSampleRate:
            note("rate " + std::to_string(static_cast<int>(opt)));
            sampleRate = opt;
            return 0;
        case effSetBlockSize:
            note("block " + std::to_string(value));
            return 0;
        case effMainsChanged:
            note(value ? "on" : "off");
            return 0;
        case effStartProcess:
            note("start");
            return 0;
        case effStopProcess:
            note("stop");
            return 0;
        case effBeginSetProgram:
            note("begin program");
            return 0;
        case effSetProgram:
            note("program " + std::to_string(value));
            return 0;
        case effEndSetProgram:
            note("end program");
            return 0;
        case effGetProgramNameIndexed:
            return give(ptr, "Only");
        case effGetParamName:
            return give(ptr, "Knob");
        case effVendorSpecific:
            return reinterpret_cast<VstIntPtr>(&journal());
        default:
            return TestEffect::dispatch(opcode, index, value, ptr, opt);
        }
    }
    void setParameter(int, float value) override {
        note("knob " + std::to_string(static_cast<int>(value * 100.0f)));
        knob_ = value;
    }
    float getParameter(int) override { return knob_; }
    void process(float** in, float** out, int frames) override {
        if (sampleRate != processedRate_) {
            knob_ = 0.0f;
        }
        processedRate_ = sampleRate;
        const auto* time = reinterpret_cast<const VstTimeInfo*>(
            host(&record, audioMasterGetTime, 0, 0, nullptr, 0.0f));
        note("process " + std::to_string(frames) + " at " +
             std::to_string(static_cast<long>(time->samplePos)) + " level " +
             std::to_string(host(&record, audioMasterGetCurrentProcessLevel, 0, 0, nullptr, 0.0f)) +
             ((time->flags & kTransportPlaying) != 0 ? "" : " standing"));
        for (int c = 0; c < 2; ++c) {
            for (int i = 0; i < frames; ++i) {
                out[c][i] = in[c][i] * knob_;
            }
        }
    }

private:
    static void note(const std::string& text) { journal() += ", " + text; }

    float processedRate_ = 44100.0f;
    float knob_ = 1.0f;
};

} // namespace

EXPORT_EFFECT(Journal)
