// Tells where the output ends once the input has.
#pragma once

#include <cstdint>
#include <limits>
#include <vector>

namespace tvhost {

// Either after a fixed time, or after the last
// frame that reaches -90 dBFS: frames below it are held back until a loud one shows that they
// belong to the output. Echoes leave gaps, so only a quiet stretch longer than any gap ends the
// output.
class TailGate {
public:
    static constexpr float kThreshold = 3.1622776601683795e-5f; // -90 dBFS
    static constexpr double kUsualGapSeconds = 5.0; // beyond the delays that most effects have
    static constexpr double kLongestSeconds = 60.0;

    // All lengths in frames, counted from the end of the input.
    static TailGate ofLength(int channels, std::int64_t frames);
    // The quiet stretch begins at `notBefore` at the earliest (0 where that is negative) and lasts
    // `quietFrames`.
    static TailGate untilQuiet(int channels, std::int64_t quietFrames, std::int64_t longest,
                               std::int64_t notBefore);

    // How long a gap `untilQuiet` has to wait for, in frames: what the user allows, or what the
    // effect says itself, up to the longest tail; some say that they never end.
    static std::int64_t gapFrames(double longestGapSeconds, std::int32_t tailSize, int sampleRate);

    // Takes the next frame of the tail. Not after isFinished().
    void push(const float* frame);

    // No later frame belongs to the output.
    bool isFinished() const;

    // Whether it ended at its longest with something heard so lately that more may have followed.
    bool wasCut() const;

    // Interleaved frames found to belong to the output; the caller takes them away.
    std::vector<float>& ready() { return released_; }

private:
    TailGate(int channels, float threshold, std::int64_t quietFrames, std::int64_t longest,
             std::int64_t notBefore);

    int channels_;
    float threshold_;
    std::int64_t quietFrames_;
    std::int64_t longest_;
    std::int64_t quietFrom_;
    std::int64_t count_ = 0;
    // Far enough back that nothing was heard.
    std::int64_t lastLoud_ = std::numeric_limits<std::int64_t>::min() / 2;
    std::vector<float> held_;
    std::vector<float> released_;
};

} // namespace tvhost
