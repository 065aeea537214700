// The product's editor: what the host opens, closes and asks for its size.
#pragma once

#include "editor/AEffGUIEditor.h"

class VstXSynth;

#ifdef __OBJC__
@class TarnsUiView13;
@class tarnsCustomWindow10;
#else
struct TarnsUiView13;
struct tarnsCustomWindow10;
#endif

// For the host's user-interface thread, but for setParameter, which runs on whatever thread set the
// parameter.
class tveditor13 : public AEffGUIEditor {
public:
    explicit tveditor13(AudioEffect* owner) : AEffGUIEditor(owner) {}

    // `ptr` is the host's view or window. Always true.
    bool open(void* ptr) override;
    void close() override;
    void setParameter(VstInt32 index, float value) override;

    void setEffectRef(VstXSynth* effectRef) { effectPtr = effectRef; }

    void* embedView = nullptr;       // what `open` received
    TarnsUiView13* uiView = nullptr; // of the latest `open`
    VstXSynth* effectPtr = nullptr;  // not owned
    tarnsCustomWindow10* detachedWindow = nullptr;
    // True from a finished `open` to the next `close`. isOpen() doesn't follow it.
    bool editorOpen = false;
};
