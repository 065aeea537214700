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
        throw UserError(path + " is no picture that can be written; end the name in .svg or .png");
    }
}

PlotFile::PlotFile(const std::string& path_, double width, double height)
    : path(path_), vector(hasExtension(path, ".svg")), output(path) {
    requireKnownExtension(path);
    if (vector) {
        surface = cairo_svg_surface_create_for_stream(appendToFile, &output, width, height);
        cairo_svg_surface_set_document_unit(surface, CAIRO_SVG_UNIT_PX);
        context = cairo_create(surface);
    } else {
        const double scale = std::min(kPixelsPerUnit, kLargestPixels / std::max(width, height));
        surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24,
                                             static_cast<int>(std::lround(width * scale)),
                                             static_cast<int>(std::lround(height * scale)));
        context = cairo_create(surface);
        cairo_scale(context, scale, scale);
    }
    canvas().fill({0.0, 0.0, width, height}, {1.0, 1.0, 1.0});
}

PlotFile::~PlotFile() {
    cairo_destroy(context);
    cairo_surface_destroy(surface);
}

void PlotFile::finish() {
    cairo_status_t status = cairo_status(context);
    if (status == CAIRO_STATUS_SUCCESS && !vector) {
        status = cairo_surface_write_to_png_stream(surface, appendToFile, &output);
    }
    cairo_surface_finish(surface);
    if (status == CAIRO_STATUS_SUCCESS) {
        status = cairo_surface_status(surface);
    }
    requireWritten(status, path);
    output.commit();
}

} // namespace tvhost
