// How the loading window counts, and where it goes.
#pragma once

#include "editor/EditorGeometry.h"

#include <cstdint>

inline constexpr std::uint32_t kInitialTotalSamples = 4380;

// One advance further, whatever the total is; wraps at 32 bits.
std::uint32_t advancedCount(std::uint32_t count);

inline constexpr double kLoadingWindowWidth = 250.0;
inline constexpr double kLoadingWindowHeight = 121.0;

// The window's lower left corner on a main screen of the given size, in points; 0 by 0 stands for
// no screen.
WindowOrigin loadingOrigin(double screenWidth, double screenHeight);
