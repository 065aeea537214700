// Paints from what the audio thread has under way.
#include "tests/host/check/plugins/GoodEffect.h"

#include <cstdlib>

namespace {

class EditorRaces : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void openEditor(unsigned long parent) override {
        editorThread_ = std::this_thread::get_id();
        GoodEffect::openEditor(parent);
        open_ = true;
    }
    void closeEditor() override {
        open_ = false;
        GoodEffect::closeEditor();
    }
    void process(float** in, float** out, int frames) override {
        if (open_ && std::this_thread::get_id() != editorThread_) {
            std::abort();
        }
        GoodEffect::process(in, out, frames);
    }

private:
    std::thread::id editorThread_;
    std::atomic<bool> open_{false};
};

} // namespace

EXPORT_EFFECT(EditorRaces)
