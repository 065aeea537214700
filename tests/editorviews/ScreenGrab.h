// What a rectangle of the screen shows.
#pragma once

#include "tests/editor/HostWindow.h"

// In pixels from the screen's upper left; the rectangle lies on the screen that DISPLAY names.
ScreenPart grabScreen(int left, int top, int width, int height);
