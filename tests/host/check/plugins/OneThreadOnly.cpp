// Must be shown on the thread that made it.
#include "tests/host/check/plugins/GoodEffect.h"

#include <cstdlib>

namespace {

class OneThreadOnly : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void openEditor(unsigned long parent) override {
        if (std::this_thread::get_id() != maker_) {
            std::abort();
        }
        GoodEffect::openEditor(parent);
    }

private:
    std::thread::id maker_ = std::this_thread::get_id();
};

} // namespace

EXPORT_EFFECT(OneThreadOnly)
