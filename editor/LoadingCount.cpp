#include "editor/LoadingCount.h"

#include "plugin/Truncation.h"

std::uint32_t advancedCount(std::uint32_t count) {
    constexpr std::uint32_t kSamplesAStep = 60;
    return count + kSamplesAStep;
}

WindowOrigin loadingOrigin(double screenWidth, double screenHeight) {
    // Half the window; of its height a half point less.
    constexpr double kLeft = 125.0;
    constexpr double kDown = 60.0;
    return {static_cast<double>(truncateToInt64(screenWidth * 0.5 - kLeft)),
            static_cast<double>(truncateToInt64(screenHeight * 0.5 - kDown))};
}
