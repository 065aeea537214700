// How far the sound has come and how loud it is, on one line of a terminal.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tvhost {

// Shows nothing unless standard error is a terminal. The line goes with the object.
class LevelMeter {
public:
    // `expectedFrames` of the sound, 0 when that isn't known.
    LevelMeter(std::int64_t expectedFrames, int sampleRate);
    ~LevelMeter();
    LevelMeter(const LevelMeter&) = delete;
    LevelMeter& operator=(const LevelMeter&) = delete;

    // `levels` are the outputs' highest magnitudes of late; `dropouts` counts from the beginning.
    void update(std::int64_t frames, const std::vector<float>& levels, std::int64_t dropouts);

    // The line that update() shows.
    static std::string line(std::int64_t frames, std::int64_t expectedFrames, int sampleRate,
                            const std::vector<float>& levels, std::int64_t dropouts);

private:
    std::int64_t expectedFrames_;
    int sampleRate_;
    bool visible_;
    std::size_t width_ = 0; // columns of what is shown
};

} // namespace tvhost
