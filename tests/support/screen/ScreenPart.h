// What a rectangle of the screen shows.
#pragma once

#include "tests/support/screen/Picture.h"

#include <cstddef>
#include <vector>

struct ScreenPart {
    int width = 0;
    int height = 0;
    std::vector<Pixel> pixels; // rows from the top

    Pixel& at(int column, int row) { return pixels[indexOf(column, row)]; }
    const Pixel& at(int column, int row) const { return pixels[indexOf(column, row)]; }

private:
    std::size_t indexOf(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
               static_cast<std::size_t>(column);
    }
};

// In pixels from the upper left of the screen that DISPLAY names; the rectangle lies on it.
ScreenPart grabScreen(int left, int top, int width, int height);
