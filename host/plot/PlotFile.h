// An SVG or PNG picture, by the extension, that appears under its name when it is complete.
#pragma once

#include "host/base/OutputFile.h"
#include "host/plot/Canvas.h"

#include <cairo.h>

#include <string>

namespace tvhost {

// An SVG or PNG picture, by the extension, that appears under its name when it is complete. PNG has
// two pixels a unit, fewer for a page too large for that.
class PlotFile {
public:
    // Throws UserError for another extension; for an early refusal.
    static void requireKnownExtension(const std::string& path);

    // A white page of `width` by `height` units. Throws UserError when nothing can be written
    // there.
    PlotFile(const std::string& path, double width, double height);
    ~PlotFile();
    PlotFile(const PlotFile&) = delete;
    PlotFile& operator=(const PlotFile&) = delete;

    Canvas canvas() { return Canvas(context_); }

    // Throws UserError when there is no room.
    void finish();

private:
    std::string path_;
    bool vector_;
    OutputFile output_;
    cairo_surface_t* surface_ = nullptr;
    cairo_t* context_ = nullptr;
};

} // namespace tvhost
