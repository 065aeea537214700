#include "editor/BalanceFigures.h"

namespace {

constexpr std::int32_t kCentre = 50;

// Twice the way from one pan value to another.
std::int32_t figure(std::int32_t from, std::int32_t to) {
    return static_cast<std::int32_t>(2u * static_cast<std::uint32_t>(to) -
                                     2u * static_cast<std::uint32_t>(from));
}

} // namespace

BalanceFigures balanceFigures(std::int32_t pan) {
    if (pan > kCentre) {
        return {0, figure(kCentre, pan)};
    }
    return {figure(pan, kCentre), 0};
}
