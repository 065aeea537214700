// Takes for granted that its window is there when its editor closes.
#include "tests/host/check/plugins/GoodEffect.h"

#include <X11/Xlib.h>
#include <cstdlib>

namespace {

class NeedsItsWindow : public GoodEffect {
public:
    using GoodEffect::GoodEffect;

protected:
    void closeEditor() override {
        XWindowAttributes attributes;
        if (editorIsOpen() && XGetWindowAttributes(display(), editorParent(), &attributes) == 0) {
            std::abort();
        }
        GoodEffect::closeEditor();
    }
};

} // namespace

EXPORT_EFFECT(NeedsItsWindow)
