// A window for an editor to lie in, which a check looks into and may take away.
#pragma once

#include "host/check/CheckedEffect.h"

#include <vector>

struct _XDisplay;

namespace tvhost {

// All calls from one thread. Errors that the X server reports are ignored, whoever caused them.
class EditorStage {
public:
    // Makes a window on DISPLAY of the size that the editor tells, or a usual one. Throws
    // CheckSkipped when the effect has no editor and UserError when there is no display.
    EditorStage(CheckRun& run, CheckedEffect& effect);
    ~EditorStage();
    EditorStage(const EditorStage&) = delete;
    EditorStage& operator=(const EditorStage&) = delete;

    struct Size {
        int width = 0; // pixels
        int height = 0;
        bool isUsable() const { return width > 0 && height > 0; }
    };
    // What the effect tells; not usable when it tells nothing.
    Size toldSize();
    Size windowSize() const { return size_; }

    // Opens the editor in the window; whether it says that it opened or has put a window there.
    bool open();
    // Gives it time, as hosts do, for some milliseconds.
    void idle(int milliseconds);
    void close();

    // The windows that lie in this one now.
    std::vector<Size> children() const;

    void destroyWindow();
    void makeWindow();

private:
    CheckedEffect& effect_;
    _XDisplay* display_;
    unsigned long window_ = 0;
    Size size_;
    bool open_ = false;
};

} // namespace tvhost
