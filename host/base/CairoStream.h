// How a picture of Cairo's gets into an output file.
#pragma once

#include "host/base/OutputFile.h"

#include <cairo.h>

#include <string>

namespace tvhost {

// What Cairo writes a picture with: appends to the OutputFile that `file` points to.
cairo_status_t appendToFile(void* file, const unsigned char* data, unsigned int length);

// Throws UserError, with `path` as what could not be written, for anything but success.
void requireWritten(cairo_status_t status, const std::string& path);

} // namespace tvhost
