// A window of tvhost's own for an editor to put its own into.
#pragma once

#include "host/plugin/EditorSize.h"
#include "host/window/ScreenPicture.h"

#include <chrono>
#include <cstdint>
#include <string>

struct _XDisplay;

namespace tvhost {

// A window of a fixed size for an editor to put its own into, on the display that DISPLAY names.
// All calls from one thread. An error that the X server reports on a connection of this process is
// ignored, whoever caused it; when the server goes, the program ends with one line and status 2.
class EditorWindow {
public:
    enum class Kind {
        kManaged, // with a title, where the user's window manager puts it
        kBare     // in the screen's corner above all others, which no window manager touches
    };

    // What shows where no editor has painted.
    static constexpr std::uint32_t kBackground = 0x2A2B2D;

    // `size` must be usable. Throws UserError when there is no such display, or none in true
    // colour.
    EditorWindow(const std::string& title, EditorSize size, Kind kind);
    ~EditorWindow();
    EditorWindow(const EditorWindow&) = delete;
    EditorWindow& operator=(const EditorWindow&) = delete;

    // The X11 window, as effEditOpen takes it.
    void* handle() const;

    EditorSize size() const { return current_; }
    // `size` must be usable.
    void resize(EditorSize size);

    // Whether somebody has put a window inside.
    bool holdsWindow() const;

    // Whether the user has closed the window, or somebody has destroyed it. Reads what has come
    // from the server.
    bool closed();

    // Returns when something comes from the server, a signal comes or the time is over.
    void wait(std::chrono::milliseconds longest) const;

    // What the window shows; of a bare one also where something lies on top of it. Throws UserError
    // when it isn't all on the screen.
    ScreenPicture picture() const;

private:
    void fixSize();

    _XDisplay* display_;
    unsigned long window_;
    unsigned long deleteWord_;
    EditorSize current_;
    bool redirected_ = false; // its own pixels are kept whatever covers it
    bool gone_ = false;
    bool closing_ = false;
};

} // namespace tvhost
