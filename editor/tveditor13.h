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

// A picture laid over the editor for a while.
struct SplashRecord {
    VstInt32 number;
};

// For the host's user-interface thread, but for setParameter, which runs on whatever thread set the
// parameter.
class tveditor13 : public AEffGUIEditor {
public:
    explicit tveditor13(AudioEffect* owner) : AEffGUIEditor(owner) {}
    ~tveditor13() override;

    // `ptr` is the host's view or window; null shows nothing. Always true.
    bool open(void* ptr) override;
    // Closes the floating window; the host's view keeps the editor's.
    void close() override;
    void setParameter(VstInt32 index, float value) override;

    void setEffectRef(VstXSynth* effectRef) { effectPtr = effectRef; }

    // For a content view of the floating window that shows splashes.
    void showSplash(const SplashRecord& splash);
    void hideSplash(const SplashRecord& splash);

    void* embedView = nullptr;       // what `open` received
    TarnsUiView13* uiView = nullptr; // of the latest `open`, never released
    VstXSynth* effectPtr = nullptr;  // not owned
    tarnsCustomWindow10* detachedWindow = nullptr;
    // True from a finished `open` to the next `close`. isOpen() doesn't follow it.
    bool editorOpen = false;

private:
    void openFloatingWindow();
    void openInside(void* host);
};
