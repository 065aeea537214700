// Passes its input on after a latency that it tells once it is switched on: 100 frames, or 300 with
// its parameter above a half, of which it tells its host. Has no patience with blocks of nothing.
#include "tests/host/plugins/TestEffect.h"

#include <cstdlib>
#include <deque>

namespace {

class Late : public TestEffect {
public:
    explicit Late(audioMasterCallback master) : TestEffect(master, 2, 2, 1, 0) {}

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        switch (opcode) {
        case effGetEffectName:
            return give(ptr, "Late");
        case effGetParamName:
            return give(ptr, "More");
        case effMainsChanged:
            if (value != 0) {
                record.initialDelay = more_ > 0.5f ? 300 : 100;
                for (std::deque<float>& line : lines_) {
                    line.assign(static_cast<std::size_t>(record.initialDelay), 0.0f);
                }
            }
            return 0;
        default:
            return TestEffect::dispatch(opcode, index, value, ptr, opt);
        }
    }
    void setParameter(int, float value) override {
        more_ = value;
        host(&record, audioMasterIOChanged, 0, 0, nullptr, 0.0f);
    }
    float getParameter(int) override { return more_; }
    void process(float** in, float** out, int frames) override {
        if (frames == 0) {
            std::abort();
        }
        for (int c = 0; c < 2; ++c) {
            for (int i = 0; i < frames; ++i) {
                lines_[c].push_back(in[c][i]);
                out[c][i] = lines_[c].front();
                lines_[c].pop_front();
            }
        }
    }

private:
    float more_ = 0.0f;
    std::deque<float> lines_[2];
};

} // namespace

EXPORT_EFFECT(Late)
