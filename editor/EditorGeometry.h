// The sizes and places of the editor and its windows, in points.
#pragma once

#include <cstdint>

inline constexpr std::int16_t kEditorWidth = 344;
inline constexpr std::int16_t kEditorHeight = 400;

struct WindowOrigin {
    double x;
    double y;
};

// Where the floating window goes on a main screen of the given size; 0 by 0 stands for no screen.
WindowOrigin floatingOrigin(double screenWidth, double screenHeight);

// The height of a host's window whose content becomes the editor: what the window has above its
// content stays.
double hostWindowHeight(double windowHeight, double contentHeight);
