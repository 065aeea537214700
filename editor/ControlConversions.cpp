#include "editor/ControlConversions.h"

#include "plugin/Truncation.h"

float parameterOfStep(std::int32_t step) {
    constexpr std::int32_t kTopOfDrag = 99;
    constexpr std::int32_t kFull = 100;
    return static_cast<float>(step == kTopOfDrag ? kFull : step) * 0.01f;
}

float parameterOfSwitch(signed char state) {
    return static_cast<float>(state);
}

std::int32_t stepOfParameter(float value) {
    return truncateToInt32(value * 100.0f);
}

signed char switchOfParameter(float value) {
    return static_cast<signed char>(static_cast<std::uint8_t>(truncateToInt32(value)));
}

std::int32_t initialStepOfParameter(float value) {
    return truncateToInt32(static_cast<double>(value) * 100.0);
}
