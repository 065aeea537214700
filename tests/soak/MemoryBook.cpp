#include "tests/soak/MemoryBook.h"

#include "tests/support/ProcessMemory.h"

#include <cmath>

namespace {

// What is made once, at the first times, is no part of what each time leaves.
constexpr int kFirstTimes = 5;
constexpr int kTimes = 40;

double leftByEach(UserSession& session, void (UserSession::*thing)()) {
    for (int i = 0; i < kFirstTimes; ++i) {
        (session.*thing)();
    }
    const std::int64_t before = allocatedBytes();
    for (int i = 0; i < kTimes; ++i) {
        (session.*thing)();
    }
    return static_cast<double>(allocatedBytes() - before) / kTimes;
}

} // namespace

MemoryBook::MemoryBook(UserSession& session) {
    units_.editor = leftByEach(session, &UserSession::openAndCloseEditor);
    units_.rate = leftByEach(session, &UserSession::changeRate);
    units_.instance = leftByEach(session, &UserSession::insertAndRemove);
    counts_ = session.counts();
    noted_ = bytes_ = allocatedBytes();
}

void MemoryBook::note(SessionThing thing) {
    const std::int64_t now = allocatedBytes();
    left_[static_cast<std::size_t>(thing)] += now - noted_;
    noted_ = now;
}

std::int64_t MemoryBook::left(SessionThing thing) const {
    return left_[static_cast<std::size_t>(thing)];
}

std::int64_t MemoryBook::grown() const {
    return allocatedBytes() - bytes_;
}

std::int64_t MemoryBook::explained(const UserSession& session) const {
    const UserSession::Counts& now = session.counts();
    return std::llround(static_cast<double>(now.editors - counts_.editors) * units_.editor +
                        static_cast<double>(now.rates - counts_.rates) * units_.rate +
                        static_cast<double>(now.instances - counts_.instances) * units_.instance);
}
