// A window of a Linux host, over a connection of its own.
#pragma once

#include "tests/support/screen/ScreenPart.h"

#include <vector>

struct _XDisplay; // Xlib's own header spoils names that test frameworks use

// As much of the screen as an editor takes, from an upper left corner in pixels.
ScreenPart screenAt(int left, int top);

class HostWindow {
public:
    static constexpr int kWidth = 344;
    static constexpr int kHeight = 400;

    // Shows a blue window at a place of the screen, in pixels from the upper left.
    HostWindow(int left, int top, int width = kWidth, int height = kHeight);
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    void* handle() const { return reinterpret_cast<void*>(window_); } // for effEditOpen
    int left() const { return left_; }
    int top() const { return top_; }

    // Asks for the keyboard, and tells how many keys were pressed for it since.
    void takeKeyboard();
    int keysPressed();

    void destroy();
    // Covers it with another window, and takes that away again.
    void cover();
    void uncover();

    // Its children, with their places.
    struct Child {
        int x, y, width, height;
        bool mapped;
        bool unmanaged; // window managers leave it alone
    };
    std::vector<Child> children() const;

    // Gives its only child another size, in pixels.
    void resizeChild(int width, int height);

    // Paints over a part of its only child, as no one does who means the child well: 0xRRGGBB, in
    // pixels from the child's upper left. It is gone where the child paints itself anew.
    void smearChild(int left, int top, int width, int height, unsigned long colour);

    // What the screen shows where it lies, whatever lies there.
    ScreenPart screen() const { return screenAt(left_, top_); }

private:
    _XDisplay* display_;
    unsigned long window_;
    unsigned long covering_ = 0;
    int keys_ = 0;
    int left_, top_;
};

// All windows of the screen that is named in DISPLAY, at any depth.
int windowsOnScreen();

// The window that has the keyboard.
unsigned long keyboardFocus();

// A connection of the host's with its error handler.
class ErrorCounter {
public:
    ErrorCounter();
    ~ErrorCounter();
    ErrorCounter(const ErrorCounter&) = delete;
    ErrorCounter& operator=(const ErrorCounter&) = delete;

    void cause(); // one error
    int count() const;

private:
    _XDisplay* display_;
};
