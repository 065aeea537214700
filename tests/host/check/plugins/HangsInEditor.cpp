// Hangs when its editor is open for the third time, and nothing else was done with it.
#include "tests/host/check/plugins/GoodEffect.h"

#include <unistd.h>

namespace {

class HangsInEditor : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void setParameter(int index, float value) override {
        used_ = true;
        GoodEffect::setParameter(index, value);
    }
    void process(float** in, float** out, int frames) override {
        used_ = true;
        GoodEffect::process(in, out, frames);
    }
    void openEditor(unsigned long parent) override {
        ++opened_;
        GoodEffect::openEditor(parent);
    }
    void idleEditor() override {
        while (opened_ >= 3 && !used_) {
            pause();
        }
    }

private:
    std::atomic<bool> used_{false};
    int opened_ = 0;
};

} // namespace

EXPORT_EFFECT(HangsInEditor)
