#include "editor/EditorGeometry.h"

#include "plugin/Truncation.h"

WindowOrigin floatingOrigin(double screenWidth, double screenHeight) {
    // Half of 640 by 614: the window keeps the place that a larger one had.
    constexpr double kLeft = 320.0;
    constexpr double kDown = 307.0;
    return {static_cast<double>(truncateToInt64(screenWidth * 0.5 - kLeft)),
            static_cast<double>(truncateToInt64(screenHeight * 0.5 - kDown))};
}

double hostWindowHeight(double windowHeight, double contentHeight) {
    return static_cast<double>(truncateToInt64(windowHeight - contentHeight) + kEditorHeight);
}
