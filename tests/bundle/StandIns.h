// What the plug-in asks of macOS when it is made and ended, and Linux has not under that name.
#pragma once

#include <string>

// The file whose code asks. `path` is what it is told to have been loaded from.
void setStandInExecutable(const void* start, std::size_t size, const std::string& path);

// By the name with its leading underscore. Null when there is none.
void* standInFor(const std::string& symbol);

// What the code has made by CFBundleCreate and the like, and not released yet.
int standInObjectsAlive();

// The directory of the bundle that was made last.
const std::string& standInBundleDirectory();
