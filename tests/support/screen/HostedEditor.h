// An effect with its editor open in a window of a Linux host.
#pragma once

#include "tests/support/screen/ExpectedFace.h"
#include "tests/support/screen/HostWindow.h"
#include "tests/support/screen/Mouse.h"

#include "plugin/vst2/AEffect.h"

#include <functional>

// Needs an X server before. Closes the editor with it; the effect is the caller's.
class HostedEditor {
public:
    explicit HostedEditor(AEffect* effect, int left = 100, int top = 80);
    ~HostedEditor();
    HostedEditor(const HostedEditor&) = delete;
    HostedEditor& operator=(const HostedEditor&) = delete;

    void idle();
    void close();
    // False when that doesn't come about in a minute.
    bool shows(const FaceControls& controls);
    bool becomes(const std::function<bool()>& condition);
    // Waits for some frame to come, and then for no change any more.
    ScreenPart settledScreen();

    AEffect* const effect;
    HostWindow window;
    const Mouse mouse;
    VstIntPtr openAnswer;

private:
    bool closed_ = false;
};
