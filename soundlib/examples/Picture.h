// A picture of labelled panels, drawn with Cairo and written as PNG.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <cairo.h>

struct Colour {
    double red;
    double green;
    double blue;
    double alpha = 1.0;
};

namespace colours {
inline constexpr Colour kInk{0.16, 0.18, 0.22};
inline constexpr Colour kFaint{0.84, 0.86, 0.89};
inline constexpr Colour kBlue{0.12, 0.42, 0.72};
inline constexpr Colour kOrange{0.88, 0.45, 0.10};
inline constexpr Colour kGreen{0.13, 0.55, 0.35};
} // namespace colours

// One axis: its range, where it is marked, and whether it is logarithmic.
struct Axis {
    double low;
    double high;
    std::vector<std::pair<double, std::string>> marks;
    std::string title;
    bool logarithmic = false;
};

class Picture {
public:
    // Where a panel's plotting area lies, in points from the upper left.
    struct Area {
        double x;
        double y;
        double width;
        double height;
    };

    using Points = std::vector<std::pair<double, double>>;

    Picture(int width, int height);

    // Draws grid, marks and titles. What is plotted until the next panel belongs to this one and is
    // cut at its edges.
    void panel(const Area& area, const std::string& title, const Axis& x, const Axis& y);

    void curve(const Points& points, const Colour& colour, double lineWidth = 1.8);
    void dashed(const Points& points, const Colour& colour);
    void dots(const Points& points, const Colour& colour);
    void bar(double left, double right, double bottom, double top, const Colour& colour);

    // `text` centred on a place of the panel.
    void label(double x, double y, const std::string& text, const Colour& colour);

    // `text` beginning at a point of the picture.
    void caption(double x, double y, const std::string& text, const Colour& colour);

    // Throws UserError and leaves no half-written file.
    void write(const std::string& path) const;

private:
    double across(double x) const;
    double down(double y) const;
    void path(const Points& points);
    void use(const Colour& colour);
    void drawText(double x, double y, double align, const std::string& text);
    void inPanel(const std::function<void()>& draw);

    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface_;
    std::unique_ptr<cairo_t, decltype(&cairo_destroy)> context_;
    Area area_{};
    Axis x_{};
    Axis y_{};
};
