// What the effect says of itself, and how it sounds, beside Linux.
#pragma once

#include "mac-check/ProgramRun.h"
#include "mac-check/Report.h"

void reportRecord(AEffect* effect, Report& report);
void reportSound(EffectEntry entry, Report& report);
