// All checks, in the order in which they run.
#pragma once

#include "host/check/Check.h"

#include <string>
#include <vector>

namespace tvhost {

constexpr int kHighestCheckLevel = 10;

const std::vector<Check>& allChecks();

// Null when there is none of this name.
const Check* findCheck(const std::string& name);

// A line for each check of at most `level`: level, name and what it protects.
std::string listChecks(int level = kHighestCheckLevel);

} // namespace tvhost
