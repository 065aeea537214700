// Says that it has no tail, and has an echo.
#include "tests/host/check/plugins/GoodEffect.h"

namespace {

class ConcealsTail : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        GoodEffect::process(in, out, frames);
        for (int i = 0; i < frames; ++i) {
            const float echo = line_[at_];
            line_[at_] = out[0][i];
            out[0][i] += 0.4f * echo;
            at_ = (at_ + 1) % line_.size();
        }
    }

private:
    std::vector<float> line_ = std::vector<float>(9600);
    std::size_t at_ = 0;
};

} // namespace

EXPORT_EFFECT(ConcealsTail)
