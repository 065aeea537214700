#include "editor/HexColour.h"

namespace {

double componentAt(std::uint32_t hex, int shift) {
    return static_cast<double>(hex >> shift & 0xFF) * 0.00392156862745098;
}

} // namespace

RgbComponents rgbOfHex(std::uint32_t hex) {
    return {componentAt(hex, 16), componentAt(hex, 8), componentAt(hex, 0)};
}
