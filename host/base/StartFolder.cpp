#include "host/base/StartFolder.h"

#include <system_error>

namespace tvhost {

namespace {

std::filesystem::path startFolder;

} // namespace

void rememberStartFolder() {
    std::error_code error; // the folder may have been removed
    startFolder = std::filesystem::current_path(error);
}

std::filesystem::path fromStartFolder(const std::string& given) {
    std::error_code error;
    return std::filesystem::absolute(startFolder / given, error);
}

} // namespace tvhost
