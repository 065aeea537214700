// The rectangles that AppKit hands to the bundle's views to draw.
#pragma once

#include "mac-check/Report.h"

// Lets the views' classes note what they are handed, from now on. The bundle has to be loaded.
void noteDrawnRectangles();

// Reports the different ones since the last call, by class.
void reportDrawnRectangles(Report& report);
