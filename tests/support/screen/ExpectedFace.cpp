#include "tests/support/screen/ExpectedFace.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <stdexcept>

namespace {

constexpr int kFrames = 128;

struct Place {
    int left, bottom, width, height; // points
    bool isSwitch;
};

// By parameter.
constexpr std::array<Place, 9> kPlaces{{{60, 202, 48, 48, false},
                                        {154, 202, 48, 48, false},
                                        {117, 119, 48, 48, false},
                                        {192, 119, 48, 48, false},
                                        {82, 132, 15, 16, true},
                                        {253, 132, 15, 16, true},
                                        {222, 37, 48, 48, false},
                                        {75, 37, 48, 48, false},
                                        {239, 202, 48, 48, false}}};

// Two by two pixels of a picture as one, premultiplied.
ScreenPart halved(const Picture& picture) {
    ScreenPart part;
    part.width = picture.width() / 2;
    part.height = picture.height() / 2;
    for (int row = 0; row < part.height; ++row) {
        for (int column = 0; column < part.width; ++column) {
            double red = 0, green = 0, blue = 0, alpha = 0;
            for (const int quarter : {0, 1, 2, 3}) {
                const Pixel& pixel = picture.at(2 * column + quarter % 2, 2 * row + quarter / 2);
                const double opacity = pixel.alpha / 255.0;
                red += pixel.red * opacity;
                green += pixel.green * opacity;
                blue += pixel.blue * opacity;
                alpha += pixel.alpha;
            }
            const auto rounded = [](double sum) {
                return static_cast<std::uint8_t>(std::lround(sum / 4.0));
            };
            part.pixels.push_back({rounded(red), rounded(green), rounded(blue), rounded(alpha)});
        }
    }
    return part;
}

const ScreenPart& pictureAtScreenSize(const std::string& name) {
    static std::map<std::string, ScreenPart> pictures;
    const auto found = pictures.find(name);
    if (found != pictures.end()) {
        return found->second;
    }
    return pictures.emplace(name, halved(Picture::load(picturePath(name)))).first->second;
}

const ScreenPart& pictureOf(const Place& place, int state) {
    if (place.isSwitch) {
        return pictureAtScreenSize(state != 0 ? "switchon" : "switchoff");
    }
    return pictureAtScreenSize(knobFrameName(state));
}

Pixel over(const Pixel& top, const Pixel& below) {
    const auto channel = [&](std::uint8_t upper, std::uint8_t lower) {
        return static_cast<std::uint8_t>(
            std::min(255L, std::lround(upper + lower * (255 - top.alpha) / 255.0)));
    };
    return {channel(top.red, below.red), channel(top.green, below.green),
            channel(top.blue, below.blue), 255};
}

ScreenPart partAt(const ScreenPart& screen, const Place& place) {
    ScreenPart part;
    part.width = place.width;
    part.height = place.height;
    const int top = screen.height - place.bottom - place.height;
    for (int row = 0; row < place.height; ++row) {
        for (int column = 0; column < place.width; ++column) {
            part.pixels.push_back(screen.at(place.left + column, top + row));
        }
    }
    return part;
}

void draw(ScreenPart& screen, const Place& place, int state) {
    const ScreenPart& picture = pictureOf(place, state);
    const int top = screen.height - place.bottom - place.height;
    for (int row = 0; row < place.height; ++row) {
        for (int column = 0; column < place.width; ++column) {
            Pixel& pixel = screen.at(place.left + column, top + row);
            pixel = over(picture.at(column, row), pixel);
        }
    }
}

int mostLike(const ScreenPart& part, const Place& place) {
    const int states = place.isSwitch ? 2 : kFrames;
    int best = 0;
    double least = 1e9;
    for (int state = 0; state < states; ++state) {
        ScreenPart face = pictureAtScreenSize("delaybackground");
        draw(face, place, state);
        const double mean = differenceOf(part, partAt(face, place)).mean;
        if (mean < least) {
            least = mean;
            best = state;
        }
    }
    return best;
}

} // namespace

ScreenPart expectedFace(const FaceControls& controls) {
    ScreenPart face = pictureAtScreenSize("delaybackground");
    for (std::size_t i = 0; i < kPlaces.size(); ++i) {
        draw(face, kPlaces[i], controls[i]);
    }
    return face;
}

bool showsFace(const ScreenPart& screen, const FaceControls& controls) {
    constexpr int kRounding = 4; // of a channel
    return differenceOf(screen, expectedFace(controls)).largest <= kRounding;
}

FaceControls shownControls(const ScreenPart& screen) {
    FaceControls shown{};
    for (std::size_t i = 0; i < kPlaces.size(); ++i) {
        shown[i] = mostLike(partAt(screen, kPlaces[i]), kPlaces[i]);
    }
    return shown;
}

FaceDifference differenceOf(const ScreenPart& one, const ScreenPart& other) {
    if (one.width != other.width || one.height != other.height) {
        throw std::runtime_error("pictures of different sizes");
    }
    double sum = 0;
    int largest = 0;
    for (std::size_t i = 0; i < one.pixels.size(); ++i) {
        const Pixel& a = one.pixels[i];
        const Pixel& b = other.pixels[i];
        sum += std::abs(a.red - b.red) + std::abs(a.green - b.green) + std::abs(a.blue - b.blue);
        largest = std::max(largest, difference(a, b));
    }
    return {sum / (3.0 * static_cast<double>(one.pixels.size())), largest};
}
