#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// One pixel in 8-bit sRGB, not premultiplied.
struct Pixel {
    std::uint8_t red;
    std::uint8_t green;
    std::uint8_t blue;
    std::uint8_t alpha;

    bool operator==(const Pixel& other) const {
        return red == other.red && green == other.green && blue == other.blue &&
               alpha == other.alpha;
    }
};

/// The largest difference of two pixels in any channel, 0 to 255.
int difference(const Pixel& one, const Pixel& other);

/// Relative luminance of an opaque pixel, 0.0 for black to 1.0 for white.
double luminance(const Pixel& pixel);

/// Contrast of two opaque pixels as web accessibility counts it, 1.0 to 21.0.
double contrast(const Pixel& one, const Pixel& other);

/// A PNG file at two pixels a point. Points count from the lower left with y growing upward, pixels
/// from the upper left with rows growing downward.
class Picture {
public:
    static constexpr int kPixelsPerPoint = 2;

    /// Throws std::runtime_error that names the file when it can't be read as PNG.
    static Picture load(const std::string& path);

    int width() const { return width_; }
    int height() const { return height_; }

    /// Pixels a metre, 0 when the file doesn't tell both directions alike.
    std::uint32_t pixelsPerMetre() const { return pixelsPerMetre_; }

    const Pixel& at(int column, int row) const;

    /// The pixel that holds a point of the picture.
    const Pixel& atPoint(double x, double y) const;

    /// A pixel's centre in points.
    double pointX(int column) const { return (column + 0.5) / kPixelsPerPoint; }
    double pointY(int row) const { return (height_ - row - 0.5) / kPixelsPerPoint; }

    bool opaque() const;

private:
    int width_ = 0;
    int height_ = 0;
    std::uint32_t pixelsPerMetre_ = 0;
    std::vector<Pixel> pixels_;
};

/// Path of a picture of the project by its name without ".png".
std::string picturePath(const std::string& name);

/// The name of knob frame 0 to 127.
std::string knobFrameName(int frame);
