// What a session leaves behind for good, and how much of it is known.
#pragma once

#include "tests/soak/UserSession.h"

#include <array>
#include <cstdint>

// Some things stay to the end of the process by design: the buffers of an instance, the filters of
// a sample rate, the views of an editor. The book measures each of them alone first. Then it notes
// beside every single thing of a session what it has left, so that what comes between them shows as
// well: audio and automation should leave nothing.
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

    // Notes as left by `thing` what has come since the last note. With the editor open nothing can
    // be told apart, so all of it but rates and instances is the editor's.
    void note(SessionThing thing);

    // Bytes since the book was made, with the editor closed.
    std::int64_t left(SessionThing thing) const;
    std::int64_t grown() const;
    // What `session` has done since then leaves so many of them by design.
    std::int64_t explained(const UserSession& session) const;
    const UserSession::Counts& countsAtFirst() const { return counts_; }

private:
    Units units_;
    UserSession::Counts counts_;
    std::int64_t bytes_;
    std::int64_t noted_;
    std::array<std::int64_t, kSessionThings> left_{};
};
