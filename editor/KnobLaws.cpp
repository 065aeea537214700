#include "editor/KnobLaws.h"

#include "plugin/Truncation.h"

#include <cmath>

namespace {

constexpr std::int32_t kHighestAngle = 225;
constexpr float kLowestAngle = -45.0f;
constexpr double kSweep = 270.0;
constexpr double kSweepsPerDegree = 0.003703703703703704;
constexpr double kRadiansPerDegree = 0.017453292519943295;
constexpr double kFramesPerStep = 1.27;
constexpr double kRim = 4.0; // points between the view's edge and the handle's circle

double lastStepOf(std::size_t count) {
    return static_cast<double>(count) - 1.0;
}

} // namespace

float angleOfStep(std::int32_t step, std::size_t count) {
    return static_cast<float>(static_cast<double>(step) * (-kSweep / lastStepOf(count)) + 225.0);
}

float draggedAngle(std::int32_t baseAngle, std::int32_t mouseDownY, std::int32_t y) {
    const auto travelled = static_cast<std::int32_t>(static_cast<std::uint32_t>(mouseDownY) -
                                                     static_cast<std::uint32_t>(y) +
                                                     static_cast<std::uint32_t>(baseAngle));
    const auto angle = static_cast<float>(travelled > kHighestAngle ? kHighestAngle : travelled);
    return angle < kLowestAngle ? kLowestAngle : angle;
}

std::int32_t stepAtAngle(float angle, std::size_t count) {
    const auto turned = static_cast<double>(static_cast<float>(kHighestAngle) - angle);
    return truncateToInt32(lastStepOf(count) * (turned * kSweepsPerDegree));
}

std::int64_t frameOfStep(std::int32_t step) {
    return truncateToInt64(static_cast<double>(step) * kFramesPerStep);
}

HandleSquare handleAtAngle(float angle, std::int32_t width, std::int32_t insets, double viewWidth,
                           double viewHeight) {
    const double radians = static_cast<double>(angle) * kRadiansPerDegree;
    const auto radius =
        static_cast<double>(truncateToInt32(viewWidth * 0.5 - kRim - static_cast<double>(insets)));
    const std::int32_t wholeHalf = width / 2;
    const auto half = static_cast<double>(wholeHalf);
    return {std::cos(radians) * radius - half + viewWidth * 0.5,
            std::sin(radians) * radius - half + viewHeight * 0.5, static_cast<double>(width)};
}
