// The screen's mouse, moved from outside.
#pragma once

#include <functional>
#include <string>
#include <vector>

// Runs xdotool to its end. Throws std::runtime_error when that fails.
void xdotool(const std::vector<std::string>& arguments);

// A mouse over an editor whose lower left corner is given in pixels of the screen. Places are
// points of the editor, y growing upward.
class Mouse {
public:
    Mouse(int left, int bottom) : left_(left), bottom_(bottom) {}

    void moveTo(int x, int y) const;
    void press() const;
    void release() const;
    // Press and movement upward in steps; the button stays down.
    void pullUp(int x, int y, int travel) const;
    // Press, movement and release as fast as the screen takes them.
    void dragAtOnce(int fromX, int fromY, int toX, int toY) const;
    struct Drag {
        int fromX, fromY, toX, toY;
    };
    void dragAtOnce(const std::vector<Drag>& drags) const; // one after the other

private:
    std::vector<std::string> movement(int x, int y) const;

    int left_, bottom_;
};

// Calls `idle` some 100 times a second until `done`, at most for a minute. Answers `done` at the
// end.
bool idleUntil(const std::function<void()>& idle, const std::function<bool()>& done);
