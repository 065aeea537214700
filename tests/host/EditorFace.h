// What the product's editor shows for what its effect is set to.
#pragma once

#include "tests/support/ReferenceDelay.h"
#include "tests/support/screen/ExpectedFace.h"

#include <cstddef>

// Knobs stand on whole steps of a hundred, on 128 frames.
inline FaceControls faceOf(const ReferenceDelay& effect) {
    FaceControls controls{};
    for (int i = 0; i < 9; ++i) {
        const int step = static_cast<int>(effect.getParameter(i) * 100.0f);
        const bool isSwitch = i == 4 || i == 5;
        controls[static_cast<std::size_t>(i)] = isSwitch ? step / 100 : step * 127 / 100;
    }
    return controls;
}
