// What the first program is to an editor.
#pragma once

#include "tests/support/screen/ExpectedFace.h"

#include <array>

// As an editor shows it when it opens: the switches start off.
inline constexpr FaceControls kSlapBack{8, 26, 46, 82, 0, 0, 63, 0, 127};

// What its controls send at the first movement of any of them, by parameter.
inline constexpr std::array<float, 9> kSlapBackSent{
    7 * 0.01f, 21 * 0.01f, 37 * 0.01f, 65 * 0.01f, 0.0f, 0.0f, 50 * 0.01f, 0.0f, 1.0f};
