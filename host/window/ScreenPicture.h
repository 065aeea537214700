// Pixels of a screen.
#pragma once

#include <cstdint>
#include <vector>

namespace tvhost {

// What a part of a screen shows, row by row from the top, each pixel 0xRRGGBB.
struct ScreenPicture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    // Whether every pixel is of this colour.
    bool isAll(std::uint32_t colour) const;

    bool operator==(const ScreenPicture& other) const {
        return width == other.width && height == other.height && pixels == other.pixels;
    }
};

} // namespace tvhost
