// What the effect gives on Linux, with the GNU C library's mathematics.
#pragma once

#include "mac-check/ProgramRun.h"

extern const ProgramResult kReferencePrograms[kPrograms];
extern const std::uint64_t kReferenceTexts[kParameters]; // by hashOfTexts
