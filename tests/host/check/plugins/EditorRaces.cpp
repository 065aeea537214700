// Paints from what the audio thread has under way.
#include "tests/host/check/plugins/GoodEffect.h"

#include <cstdlib>

namespace {

class EditorRaces : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void openEditor(unsigned long parent) override {
        editorThread = std::this_thread::get_id();
        GoodEffect::openEditor(parent);
        open = true;
    }
    void closeEditor() override {
        open = false;
        GoodEffect::closeEditor();
    }
    void process(float** in, float** out, int frames) override {
        if (open && std::this_thread::get_id() != editorThread) {
            std::abort();
        }
        GoodEffect::process(in, out, frames);
    }

private:
    std::thread::id editorThread;
    std::atomic<bool> open{false};
};

} // namespace

EXPORT_EFFECT(EditorRaces)
