// Is late by 64 samples and does not tell.
#include "tests/host/check/plugins/GoodEffect.h"

#include <utility>

namespace {

class ConcealsLatency : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void process(float** in, float** out, int frames) override {
        GoodEffect::process(in, out, frames);
        for (int i = 0; i < frames; ++i) {
            for (int c = 0; c < 2; ++c) {
                std::swap(line_[c][at_], out[c][i]);
            }
            at_ = (at_ + 1) % line_[0].size();
        }
    }

private:
    std::array<std::array<float, 64>, 2> line_{};
    std::size_t at_ = 0;
};

} // namespace

EXPORT_EFFECT(ConcealsLatency)
