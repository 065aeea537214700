#include "host/window/PngFile.h"

#include "host/base/CairoStream.h"
#include "host/base/PlainText.h"
#include "host/base/UserError.h"

#include <cairo.h>

#include <cstddef>
#include <cstring>
#include <filesystem>

namespace tvhost {

void PngFile::requirePngName(const std::string& path) {
    if (!equalWithoutCase(std::filesystem::path(path).extension().string(), ".png")) {
        throw UserError(path + ": unknown picture format; use .png");
    }
}

PngFile::PngFile(const std::string& path) : path_(path), output_(path_) {}

void PngFile::write(const ScreenPicture& picture) {
    cairo_surface_t* const surface =
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, picture.width, picture.height);
    cairo_status_t status = cairo_surface_status(surface);
    if (status == CAIRO_STATUS_SUCCESS) {
        unsigned char* const data = cairo_image_surface_get_data(surface);
        const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface));
        const auto width = static_cast<std::size_t>(picture.width);
        for (std::size_t row = 0; row < static_cast<std::size_t>(picture.height); ++row) {
            std::memcpy(data + row * stride, picture.pixels.data() + row * width,
                        width * sizeof(std::uint32_t));
        }
        cairo_surface_mark_dirty(surface);
        status = cairo_surface_write_to_png_stream(surface, appendToFile, &output_);
    }
    cairo_surface_destroy(surface);
    requireWritten(status, path_);
    output_.commit();
}

} // namespace tvhost
