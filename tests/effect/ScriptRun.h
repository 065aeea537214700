// The effect and its model through one script, side by side.
#pragma once

#include "tests/support/ScriptGenerator.h"

#include <string>
#include <vector>

// Empty when every block's memory and every state between two steps are the same; otherwise which
// step showed which difference first.
std::string runAgainstModel(const std::vector<ScriptStep>& script);
