// Breaks when two threads write at a time.
#include "tests/host/check/plugins/GoodEffect.h"

#include <chrono>
#include <cstdlib>

namespace {

class RacesOnWrites : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void setParameter(int index, float value) override {
        if (inside.exchange(true)) {
            std::abort();
        }
        const auto end = std::chrono::steady_clock::now() + std::chrono::microseconds(20);
        while (std::chrono::steady_clock::now() < end) {
        }
        GoodEffect::setParameter(index, value);
        inside = false;
    }

private:
    std::atomic<bool> inside{false};
};

} // namespace

EXPORT_EFFECT(RacesOnWrites)
