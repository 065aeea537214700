#include "host/plot/Canvas.h"

#include <cmath>

namespace tvhost {

void Canvas::setColour(const Colour& colour) {
    cairo_set_source_rgba(cairo_, colour.red, colour.green, colour.blue, colour.alpha);
}

void Canvas::setFont(double size, Weight weight) {
    cairo_select_font_face(cairo_, "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                           weight == Weight::kBold ? CAIRO_FONT_WEIGHT_BOLD
                                                   : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cairo_, size);
}

void Canvas::fill(const Rectangle& area, const Colour& colour) {
    setColour(colour);
    cairo_rectangle(cairo_, area.x, area.y, area.width, area.height);
    cairo_fill(cairo_);
}

void Canvas::frame(const Rectangle& area, const Colour& colour, double width) {
    cairo_rectangle(cairo_, area.x, area.y, area.width, area.height);
    stroke(colour, width);
}

void Canvas::line(double x1, double y1, double x2, double y2, const Colour& colour, double width) {
    moveTo(x1, y1);
    lineTo(x2, y2);
    stroke(colour, width);
}

void Canvas::dot(double x, double y, double radius, const Colour& fill, const Colour& rim) {
    cairo_new_sub_path(cairo_);
    cairo_arc(cairo_, x, y, radius, 0.0, 2.0 * M_PI);
    setColour(fill);
    cairo_fill_preserve(cairo_);
    stroke(rim, 1.0);
}

void Canvas::stroke(const Colour& colour, double width, double dash) {
    setColour(colour);
    cairo_set_line_width(cairo_, width);
    cairo_set_line_join(cairo_, CAIRO_LINE_JOIN_ROUND);
    if (dash > 0.0) {
        cairo_set_dash(cairo_, &dash, 1, 0.0);
    }
    cairo_stroke(cairo_);
    cairo_set_dash(cairo_, nullptr, 0, 0.0);
}

double Canvas::textWidth(const std::string& words, double size, Weight weight) {
    setFont(size, weight);
    cairo_text_extents_t extents;
    cairo_text_extents(cairo_, words.c_str(), &extents);
    return extents.x_advance;
}

void Canvas::text(double x, double y, const std::string& words, double size, const Colour& colour,
                  Align align, Weight weight) {
    if (align != Align::kLeft) {
        x -= textWidth(words, size, weight) * (align == Align::kCentre ? 0.5 : 1.0);
    }
    setFont(size, weight);
    setColour(colour);
    cairo_move_to(cairo_, x, y);
    cairo_show_text(cairo_, words.c_str());
    cairo_new_path(cairo_);
}

void Canvas::uprightText(double x, double y, const std::string& words, double size,
                         const Colour& colour) {
    cairo_save(cairo_);
    cairo_translate(cairo_, x, y);
    cairo_rotate(cairo_, -M_PI / 2.0);
    text(0.0, 0.0, words, size, colour, Align::kCentre);
    cairo_restore(cairo_);
}

std::string Canvas::fitted(const std::string& words, double size, Weight weight, double width) {
    if (textWidth(words, size, weight) <= width) {
        return words;
    }
    std::string kept = words;
    const std::string ellipsis = "\u2026";
    while (!kept.empty() && textWidth(kept + ellipsis, size, weight) > width) {
        // A character goes with all of its bytes.
        while (kept.size() > 1 && (static_cast<unsigned char>(kept.back()) & 0xC0u) == 0x80u) {
            kept.pop_back();
        }
        kept.pop_back();
    }
    return kept + ellipsis;
}

void Canvas::clip(const Rectangle& area) {
    cairo_save(cairo_);
    cairo_rectangle(cairo_, area.x, area.y, area.width, area.height);
    cairo_clip(cairo_);
}

} // namespace tvhost
