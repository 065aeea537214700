// On what system the check runs.
#pragma once

#include "mac-check/Report.h"

void reportSystem(Report& report);
