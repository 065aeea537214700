// The program that checks the bundle on Macs, run in this process: what it loads is the mapped
// bundle, and AppKit is GNUstep.
#pragma once

#include <string>
#include <vector>

// Its exit status. The arguments are those behind its name. Once in a process, after MacViews.
int runMappedCheck(const std::vector<std::string>& arguments);
