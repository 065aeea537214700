#include "host/window/ScreenPicture.h"

#include <algorithm>

namespace tvhost {

bool ScreenPicture::isAll(std::uint32_t colour) const {
    return std::all_of(pixels.begin(), pixels.end(),
                       [colour](std::uint32_t pixel) { return pixel == colour; });
}

} // namespace tvhost
