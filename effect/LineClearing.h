// How far a clearing of the delay lines is, for a block that meets it.
#pragma once

#include "effect/LiveField.h"

#include <cstdint>

// Any thread may clear, without a lock. Of two that clear at once one may lose a count of the other
// or lower the flag too early; nothing of that outlasts the clearing.
class LineClearing {
public:
    void begin() {
        writeLive(running_, true);
        writeLive(begun_, begun_ + 1);
        forgetMemory(); // the clearing stays behind the marks
    }
    void end() {
        forgetMemory(); // and before this one
        writeLive(running_, false);
    }

    bool running() const { return readLive(running_); }
    // How many have begun so far.
    std::uint32_t begun() const { return readLive(begun_); }

private:
    bool running_ = false;
    std::uint32_t begun_ = 0;
};
