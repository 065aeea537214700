// What the pictures are drawn with: lines, areas and words on a page.
#pragma once

#include <cairo.h>

#include <string>

namespace tvhost {

struct Colour {
    double red;
    double green;
    double blue;
    double alpha = 1.0;
};

struct Rectangle {
    double x;
    double y;
    double width;
    double height;

    double right() const { return x + width; }
    double bottom() const { return y + height; }
};

enum class Align { kLeft, kCentre, kRight };
enum class Weight { kNormal, kBold };

// Draws on a Cairo context that it doesn't own. Lengths in units of the page, y downwards.
class Canvas {
public:
    explicit Canvas(cairo_t* context) : cairo_(context) {}

    void fill(const Rectangle& area, const Colour& colour);
    void frame(const Rectangle& area, const Colour& colour, double width);
    void line(double x1, double y1, double x2, double y2, const Colour& colour, double width);
    void dot(double x, double y, double radius, const Colour& fill, const Colour& rim);

    // A path of points, drawn by stroke(). Dash lengths of 0 give a whole line.
    void moveTo(double x, double y) { cairo_move_to(cairo_, x, y); }
    void lineTo(double x, double y) { cairo_line_to(cairo_, x, y); }
    void stroke(const Colour& colour, double width, double dash = 0.0);

    // `x` as `align` says, `y` the baseline.
    void text(double x, double y, const std::string& words, double size, const Colour& colour,
              Align align = Align::kLeft, Weight weight = Weight::kNormal);
    // Reading upwards, centred on (x, y).
    void uprightText(double x, double y, const std::string& words, double size,
                     const Colour& colour);
    double textWidth(const std::string& words, double size, Weight weight = Weight::kNormal);
    // `words`, cut with an ellipsis to fit into `width`.
    std::string fitted(const std::string& words, double size, Weight weight, double width);

    // Drawing stays inside `area` until unclip().
    void clip(const Rectangle& area);
    void unclip() { cairo_restore(cairo_); }

private:
    void setColour(const Colour& colour);
    void setFont(double size, Weight weight);

    cairo_t* cairo_;
};

} // namespace tvhost
