// The editor in a window, drawn, dragged and closed.
#pragma once

#include "mac-check/Report.h"
#include "plugin/vst2/AEffect.h"

// Shows it for some two seconds; saves pictures of it into the report's folder.
void reportEditor(AEffect* effect, Report& report);
