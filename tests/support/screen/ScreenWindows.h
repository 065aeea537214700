// What is on the screen that DISPLAY names, whoever showed it. Throws std::runtime_error when there
// is no such screen.
#pragma once

#include <optional>
#include <string>
#include <vector>

struct _XDisplay; // Xlib's own header spoils names that test frameworks use

struct ShownWindow {
    unsigned long handle;
    std::string name;             // empty for a window without one
    int left, top, width, height; // pixels of the screen

    bool contains(const ShownWindow& other) const {
        return other.left >= left && other.top >= top && other.left + other.width <= left + width &&
               other.top + other.height <= top + height;
    }
};

// Those that are mapped with all that they lie in, at any depth.
std::vector<ShownWindow> shownWindows();

// The first of them that has this name.
std::optional<ShownWindow> findWindow(const std::string& name);

// The innermost one inside `outer` that is at least so large, in pixels.
std::optional<ShownWindow> innermostWindow(const ShownWindow& outer, int width, int height);

// As findWindow, after up to a minute. Throws std::runtime_error when it doesn't come.
ShownWindow awaitWindow(const std::string& name);

// What a window tells window managers: the class of its program, and whether it is of one size
// only.
std::string programClassOf(unsigned long window);
bool isOfFixedSize(unsigned long window);

bool windowManagerRuns();

// The window that the window manager has given the keyboard, 0 for none.
unsigned long activeWindow();

// What a window manager does for a window's close button.
void askToClose(unsigned long window);

struct ScreenPlace {
    int x, y;
};

// The middle of the bars of exactly this colour, 0xRRGGBB: rows with at least `length` such pixels
// side by side.
std::optional<ScreenPlace> middleOfBars(unsigned long colour, int length);

// Counts the windows that are shown on the screen itself, not inside others, from its making on.
class ShownWindowCounter {
public:
    ShownWindowCounter();
    ~ShownWindowCounter();
    ShownWindowCounter(const ShownWindowCounter&) = delete;
    ShownWindowCounter& operator=(const ShownWindowCounter&) = delete;

    int count(); // however short they were there

private:
    _XDisplay* display_;
    int count_ = 0;
};
