// Core Graphics, as far as the plug-in uses it.
#pragma once

#include <CoreGraphics/CGColor.h>
#include <CoreGraphics/CGGeometry.h>
#include <CoreGraphics/CGWindowLevel.h>
