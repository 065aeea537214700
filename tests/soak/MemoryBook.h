// What a session leaves behind for good, and how much of it is known.
#pragma once

#include "tests/soak/UserSession.h"

#include <cstdint>

// Some things stay to the end of the process by design: the buffers of an instance, the filters of
// a sample rate, the views of an editor. The book measures each of them alone first and tells
// afterwards what a session should have left.
class MemoryBook {
public:
    // Bytes that one of each leaves, from a number of them in a row.
    struct Units {
        double editor;
        double rate;
        double instance;
    };

    // Takes some seconds. An audio thread has to run, and nothing else.
    explicit MemoryBook(UserSession& session);

    const Units& units() const { return units_; }

    // Bytes that have come since the book was made, with the editor closed.
    std::int64_t grown() const;
    // What `session` has done since then leaves so many of them by design.
    std::int64_t explained(const UserSession& session) const;

private:
    Units units_;
    UserSession::Counts counts_;
    std::int64_t bytes_;
};
