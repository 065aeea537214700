// Has a line that lacks the last samples of a second at 384 kHz, and writes there all the same.
#include "tests/host/check/plugins/GoodEffect.h"

#include <memory>

namespace {

class WritesPastItsLine : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        const float length = getParameter(0) * (sampleRate - 1.0f);
        volatile float* const samples = line_.get();
        samples[static_cast<std::size_t>(length)] = 0.0f;
        GoodEffect::process(in, out, frames);
    }

private:
    static constexpr std::size_t kRoom = 384000 - 8;

    std::unique_ptr<float[]> line_ = std::make_unique<float[]>(kRoom);
};

} // namespace

EXPORT_EFFECT(WritesPastItsLine)
