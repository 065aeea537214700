#include "host/base/CairoStream.h"

#include "host/base/UserError.h"

#include <cerrno>

#include <unistd.h>

namespace tvhost {

cairo_status_t appendToFile(void* file, const unsigned char* data, unsigned int length) {
    const int descriptor = static_cast<OutputFile*>(file)->descriptor();
    while (length > 0) {
        const ssize_t written = write(descriptor, data, length);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return CAIRO_STATUS_WRITE_ERROR;
        }
        data += written;
        length -= static_cast<unsigned int>(written);
    }
    return CAIRO_STATUS_SUCCESS;
}

void requireWritten(cairo_status_t status, const std::string& path) {
    if (status != CAIRO_STATUS_SUCCESS) {
        throw UserError(path + " cannot be written: " + cairo_status_to_string(status) +
                        "; give a file in a folder with room for it");
    }
}

} // namespace tvhost
