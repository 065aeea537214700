// A virtual X server of the test's own.
#pragma once

#include <string>

#include <sys/types.h>

// One screen, without a window manager. Ends with the object, or with the test's
// process.
class XServer {
public:
    // Starts it, waits until it listens and points DISPLAY to it. Throws std::runtime_error when
    // there is no Xvfb. `screen` is width x height x bits a pixel.
    explicit XServer(const std::string& screen = "1280x800x24");
    ~XServer();
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    // Of the screen where nothing else is asked for.
    static constexpr int kWidth = 1280;
    static constexpr int kHeight = 800;

    const std::string& display() const { return name_; }

private:
    pid_t process_;
    std::string name_;
};

// The one that all tests of a process share: AppKit stays with the first it meets.
XServer& sharedXServer();
