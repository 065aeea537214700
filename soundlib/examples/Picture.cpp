#include "soundlib/examples/Picture.h"

#include <cmath>

#include "soundlib/examples/OutputFile.h"
#include "soundlib/examples/UserError.h"

namespace {

constexpr double kPixelsPerPoint = 2.0;
constexpr double kTextSize = 12.0;

double place(const Axis& axis, double value) {
    if (axis.logarithmic) {
        return std::log(value / axis.low) / std::log(axis.high / axis.low);
    }
    return (value - axis.low) / (axis.high - axis.low);
}

} // namespace

Picture::Picture(int width, int height)
    : surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24,
                                          static_cast<int>(width * kPixelsPerPoint),
                                          static_cast<int>(height * kPixelsPerPoint)),
               cairo_surface_destroy),
      context_(cairo_create(surface_.get()), cairo_destroy) {
    cairo_scale(context_.get(), kPixelsPerPoint, kPixelsPerPoint);
    cairo_set_source_rgb(context_.get(), 1.0, 1.0, 1.0);
    cairo_paint(context_.get());
    cairo_select_font_face(context_.get(), "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                           CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_line_join(context_.get(), CAIRO_LINE_JOIN_ROUND);
}

void Picture::panel(const Area& area, const std::string& title, const Axis& x, const Axis& y) {
    area_ = area;
    x_ = x;
    y_ = y;
    cairo_t* context = context_.get();
    cairo_set_line_width(context, 1.0);
    cairo_set_font_size(context, kTextSize);
    for (const auto& [value, text] : x.marks) {
        use(colours::kFaint);
        cairo_move_to(context, across(value), area.y);
        cairo_line_to(context, across(value), area.y + area.height);
        cairo_stroke(context);
        use(colours::kInk);
        drawText(across(value), area.y + area.height + 16.0, 0.5, text);
    }
    for (const auto& [value, text] : y.marks) {
        use(colours::kFaint);
        cairo_move_to(context, area.x, down(value));
        cairo_line_to(context, area.x + area.width, down(value));
        cairo_stroke(context);
        use(colours::kInk);
        drawText(area.x - 6.0, down(value) + 4.0, 1.0, text);
    }
    use(colours::kInk);
    drawText(area.x + area.width / 2.0, area.y + area.height + 32.0, 0.5, x.title);
    drawText(area.x, area.y - 8.0, 0.0, title);
    if (!y.title.empty()) {
        cairo_save(context);
        cairo_translate(context, area.x - 44.0, area.y + area.height / 2.0);
        cairo_rotate(context, -M_PI / 2.0);
        drawText(0.0, 0.0, 0.5, y.title);
        cairo_restore(context);
    }
}

void Picture::curve(const Points& points, const Colour& colour, double lineWidth) {
    inPanel([&] {
        use(colour);
        cairo_set_line_width(context_.get(), lineWidth);
        path(points);
        cairo_stroke(context_.get());
    });
}

void Picture::dashed(const Points& points, const Colour& colour) {
    inPanel([&] {
        const double lengths[] = {5.0, 4.0};
        use(colour);
        cairo_set_line_width(context_.get(), 1.2);
        cairo_set_dash(context_.get(), lengths, 2, 0.0);
        path(points);
        cairo_stroke(context_.get());
    });
}

void Picture::dots(const Points& points, const Colour& colour) {
    inPanel([&] {
        use(colour);
        for (const auto& [x, y] : points) {
            cairo_arc(context_.get(), across(x), down(y), 2.6, 0.0, 2.0 * M_PI);
            cairo_fill(context_.get());
        }
    });
}

void Picture::bar(double left, double right, double bottom, double top, const Colour& colour) {
    inPanel([&] {
        use(colour);
        cairo_rectangle(context_.get(), across(left), down(top), across(right) - across(left),
                        down(bottom) - down(top));
        cairo_fill(context_.get());
    });
}

void Picture::label(double x, double y, const std::string& text, const Colour& colour) {
    use(colour);
    drawText(across(x), down(y) + 4.0, 0.5, text);
}

void Picture::caption(double x, double y, const std::string& text, const Colour& colour) {
    use(colour);
    drawText(x, y, 0.0, text);
}

void Picture::write(const std::string& path) const {
    OutputFile output(path);
    cairo_surface_flush(surface_.get());
    if (cairo_surface_write_to_png(surface_.get(), output.temporaryPath().c_str()) !=
        CAIRO_STATUS_SUCCESS) {
        throw UserError(path + ": can't be written; a path in a writable folder is needed");
    }
    output.keep();
}

double Picture::across(double x) const {
    return area_.x + area_.width * place(x_, x);
}

double Picture::down(double y) const {
    return area_.y + area_.height * (1.0 - place(y_, y));
}

void Picture::path(const Points& points) {
    for (const auto& [x, y] : points) {
        cairo_line_to(context_.get(), across(x), down(y));
    }
}

void Picture::use(const Colour& colour) {
    cairo_set_source_rgba(context_.get(), colour.red, colour.green, colour.blue, colour.alpha);
}

void Picture::drawText(double x, double y, double align, const std::string& text) {
    cairo_text_extents_t extents;
    cairo_text_extents(context_.get(), text.c_str(), &extents);
    cairo_move_to(context_.get(), x - align * extents.x_advance, y);
    cairo_show_text(context_.get(), text.c_str());
}

void Picture::inPanel(const std::function<void()>& draw) {
    cairo_save(context_.get());
    cairo_rectangle(context_.get(), area_.x, area_.y, area_.width, area_.height);
    cairo_clip(context_.get());
    draw();
    cairo_restore(context_.get());
}
