#include "tests/support/screen/Mouse.h"

#include <chrono>
#include <stdexcept>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

void xdotool(const std::vector<std::string>& arguments) {
    const pid_t process = fork();
    if (process == 0) {
        std::vector<char*> words{const_cast<char*>("xdotool")};
        for (const std::string& argument : arguments) {
            words.push_back(const_cast<char*>(argument.c_str()));
        }
        words.push_back(nullptr);
        execvp("xdotool", words.data());
        _exit(127);
    }
    int status = 0;
    waitpid(process, &status, 0);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        throw std::runtime_error("xdotool failed");
    }
}

std::vector<std::string> Mouse::movement(int x, int y) const {
    // The pixel above a point's lower edge.
    return {"mousemove", std::to_string(left_ + x), std::to_string(bottom_ - 1 - y)};
}

void Mouse::moveTo(int x, int y) const {
    xdotool(movement(x, y));
}

void Mouse::press() const {
    xdotool({"mousedown", "1"});
}

void Mouse::release() const {
    xdotool({"mouseup", "1"});
}

void Mouse::pullUp(int x, int y, int travel) const {
    constexpr int kSteps = 6;
    moveTo(x, y);
    press();
    for (int step = 1; step <= kSteps; ++step) {
        moveTo(x, y + travel * step / kSteps);
    }
}

void Mouse::dragAtOnce(int fromX, int fromY, int toX, int toY) const {
    dragAtOnce({{fromX, fromY, toX, toY}});
}

void Mouse::dragAtOnce(const std::vector<Drag>& drags) const {
    std::vector<std::string> words;
    const auto add = [&](const std::vector<std::string>& more) {
        words.insert(words.end(), more.begin(), more.end());
    };
    for (const Drag& drag : drags) {
        add(movement(drag.fromX, drag.fromY));
        add({"mousedown", "1"});
        add(movement(drag.toX, drag.toY));
        add({"mouseup", "1"});
    }
    xdotool(words);
}

bool idleUntil(const std::function<void()>& idle, const std::function<bool()>& done) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!done()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        idle();
    }
    return true;
}
