#include "host/plot/PlotFile.h"

#include "host/base/CairoStream.h"
#include "host/base/PlainText.h"
#include "host/base/UserError.h"

#include <cairo-svg.h>

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace tvhost {

namespace {

constexpr double kPixelsPerUnit = 2.0;
constexpr double kLargestPixels = 30000.0; // of Cairo's image surfaces, with some to spare

bool hasExtension(const std::string& path, const char* extension) {
    return equalWithoutCase(std::filesystem::path(path).extension().string(), extension);
}

} // namespace

void PlotFile::requireKnownExtension(const std::string& path) {
    if (!hasExtension(path, ".svg") && !hasExtension(path, ".png")) {
        throw UserError(path + ": unknown picture format; use .svg or .png");
    }
}

PlotFile::PlotFile(const std::string& path, double width, double height)
    : path_(path), vector_(hasExtension(path_, ".svg")), output_(path_) {
    requireKnownExtension(path_);
    if (vector_) {
        surface_ = cairo_svg_surface_create_for_stream(appendToFile, &output_, width, height);
        cairo_svg_surface_set_document_unit(surface_, CAIRO_SVG_UNIT_PX);
        context_ = cairo_create(surface_);
    } else {
        const double scale = std::min(kPixelsPerUnit, kLargestPixels / std::max(width, height));
        surface_ = cairo_image_surface_create(CAIRO_FORMAT_RGB24,
                                              static_cast<int>(std::lround(width * scale)),
                                              static_cast<int>(std::lround(height * scale)));
        context_ = cairo_create(surface_);
        cairo_scale(context_, scale, scale);
    }
    canvas().fill({0.0, 0.0, width, height}, {1.0, 1.0, 1.0});
}

PlotFile::~PlotFile() {
    cairo_destroy(context_);
    cairo_surface_destroy(surface_);
}

void PlotFile::finish() {
    cairo_status_t status = cairo_status(context_);
    if (status == CAIRO_STATUS_SUCCESS && !vector_) {
        status = cairo_surface_write_to_png_stream(surface_, appendToFile, &output_);
    }
    cairo_surface_finish(surface_);
    if (status == CAIRO_STATUS_SUCCESS) {
        status = cairo_surface_status(surface_);
    }
    requireWritten(status, path_);
    output_.commit();
}

} // namespace tvhost
