// From a control's whole number to a parameter's value, and back. The two ways back differ in
// precision, so that a value may read one step lower after the editor was opened anew.
#pragma once

#include <cstdint>

// What a knob sends. Step 99, the top of any drag, is 1.0.
float parameterOfStep(std::int32_t step);

// What a switch sends.
float parameterOfSwitch(signed char state);

// The step that shows a value which the host sets while the editor is open.
std::int32_t stepOfParameter(float value);

// The state that shows such a value on a switch: 0 for anything below 1.0.
signed char switchOfParameter(float value);

// The step that a knob starts with when the editor opens.
std::int32_t initialStepOfParameter(float value);
