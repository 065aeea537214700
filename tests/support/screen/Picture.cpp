#include "tests/support/screen/Picture.h"

#include <png.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace {

// Only plain data lives here: libpng leaves it by longjmp when the header is broken.
std::uint32_t readPixelsPerMetre(const char* path) {
    std::uint32_t result = 0;
    std::FILE* file = std::fopen(path, "rb");
    if (file == nullptr) {
        return 0;
    }
    png_structp reader = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(reader);
    if (setjmp(png_jmpbuf(reader)) == 0) {
        png_init_io(reader, file);
        png_read_info(reader, info);
        result = png_get_pixels_per_meter(reader, info);
    }
    png_destroy_read_struct(&reader, &info, nullptr);
    std::fclose(file);
    return result;
}

double linear(std::uint8_t component) {
    const double value = component / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

} // namespace

int difference(const Pixel& one, const Pixel& other) {
    return std::max({std::abs(one.red - other.red), std::abs(one.green - other.green),
                     std::abs(one.blue - other.blue), std::abs(one.alpha - other.alpha)});
}

double luminance(const Pixel& pixel) {
    return 0.2126 * linear(pixel.red) + 0.7152 * linear(pixel.green) + 0.0722 * linear(pixel.blue);
}

double contrast(const Pixel& one, const Pixel& other) {
    const double first = luminance(one) + 0.05;
    const double second = luminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

Picture Picture::load(const std::string& path) {
    png_image image;
    std::memset(&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0) {
        throw std::runtime_error(path + ": " + image.message);
    }
    image.format = PNG_FORMAT_RGBA;
    Picture picture;
    picture.width_ = static_cast<int>(image.width);
    picture.height_ = static_cast<int>(image.height);
    picture.pixels_.resize(std::size_t{image.width} * image.height);
    static_assert(sizeof(Pixel) == 4, "pixels are read as packed RGBA");
    if (png_image_finish_read(&image, nullptr, picture.pixels_.data(), 0, nullptr) == 0) {
        throw std::runtime_error(path + ": " + image.message);
    }
    picture.pixelsPerMetre_ = readPixelsPerMetre(path.c_str());
    return picture;
}

const Pixel& Picture::at(int column, int row) const {
    if (column < 0 || column >= width_ || row < 0 || row >= height_) {
        throw std::out_of_range("no such pixel");
    }
    return pixels_[static_cast<std::size_t>(row) * static_cast<std::size_t>(width_) +
                   static_cast<std::size_t>(column)];
}

const Pixel& Picture::atPoint(double x, double y) const {
    return at(static_cast<int>(std::floor(x * kPixelsPerPoint)),
              height_ - 1 - static_cast<int>(std::floor(y * kPixelsPerPoint)));
}

bool Picture::opaque() const {
    return std::all_of(pixels_.begin(), pixels_.end(),
                       [](const Pixel& pixel) { return pixel.alpha == 255; });
}

std::string picturePath(const std::string& name) {
    return std::string(TVDELAY_RESOURCES_DIR) + "/" + name + ".png";
}

std::string knobFrameName(int frame) {
    return "fxknob" + std::to_string(frame);
}
