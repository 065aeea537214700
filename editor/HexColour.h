// The colour that a number in the form 0xRRGGBB stands for.
#pragma once

#include <cstdint>

// Components from 0.0 to 1.0; bits 24 and up are not looked at.
struct RgbComponents {
    double red;
    double green;
    double blue;
};

RgbComponents rgbOfHex(std::uint32_t hex);
