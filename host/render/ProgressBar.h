// How far a render has come, on the terminal.
#pragma once

#include <cstdint>
#include <string>

namespace tvhost {

// One line on standard error that tells how far a render has come, when standard error is a
// terminal; nothing otherwise. The line goes with the object, before any message.
class ProgressBar {
public:
    // `expectedFrames` of the input; 0 when not known.
    ProgressBar(std::int64_t expectedFrames, int sampleRate);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void update(std::int64_t frames, bool inTail);

private:
    std::string line(std::int64_t frames, bool inTail) const;

    std::int64_t expected_;
    int rate_;
    bool visible_;
    std::string shown_;
};

} // namespace tvhost
