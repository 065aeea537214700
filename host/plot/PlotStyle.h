// Colours and words that all pictures share.
#pragma once

#include "host/plot/Canvas.h"

#include <string>

namespace tvhost::style {

inline constexpr Colour kInk{0.13, 0.15, 0.18};
inline constexpr Colour kMuted{0.42, 0.45, 0.50};
inline constexpr Colour kGrid{0.89, 0.90, 0.92};
inline constexpr Colour kFineGrid{0.95, 0.955, 0.965};
inline constexpr Colour kFrame{0.72, 0.74, 0.78};
inline constexpr Colour kPaper{1.0, 1.0, 1.0};
inline constexpr Colour kBand{0.965, 0.97, 0.98};

// Told apart also by those who see few colours: the left input's blue, the right one's orange.
inline constexpr Colour kLeftInput{0.10, 0.36, 0.66};
inline constexpr Colour kRightInput{0.85, 0.37, 0.05};
inline constexpr Colour kLaterEcho{0.45, 0.50, 0.57};

inline const Colour& inputColour(int input) {
    return input == 0 ? kLeftInput : kRightInput;
}

// "left input", "right output", or just "input" when there is only one; "first output" when there
// are more than two. `channel` is 0 or 1.
inline std::string channelWords(int channel, int channels, const std::string& what) {
    if (channels > 2) {
        return (channel == 0 ? "first " : "second ") + what;
    }
    return channels == 1 ? what : (channel == 0 ? "left " : "right ") + what;
}

} // namespace tvhost::style
