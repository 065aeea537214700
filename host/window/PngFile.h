// A picture of the screen as a PNG file.
#pragma once

#include "host/base/OutputFile.h"
#include "host/window/ScreenPicture.h"

#include <string>

namespace tvhost {

// A PNG picture, one pixel a pixel, that appears under its name when it is complete.
class PngFile {
public:
    // Throws UserError for another extension; for an early refusal.
    static void requirePngName(const std::string& path);

    // Throws UserError when nothing can be written there.
    explicit PngFile(const std::string& path);

    // Once. Throws UserError when there is no room.
    void write(const ScreenPicture& picture);

private:
    std::string path_;
    OutputFile output_;
};

} // namespace tvhost
