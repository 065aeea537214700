// Wakes a waiting thread without a lock, and without a wake-up being lost.
#pragma once

// One thread waits, any number wake it.
class Wakeup {
public:
    // Throws std::system_error when the system has no pipe left.
    Wakeup();
    ~Wakeup();
    Wakeup(const Wakeup&) = delete;
    Wakeup& operator=(const Wakeup&) = delete;

    // Takes no lock and never waits; one system call. What was written before is seen by the thread
    // that wakes.
    void wake();

    // Waits for a `wake` since the last `wait` returned, one for several.
    void wait();

private:
    int reading_;
    int writing_;
};
