// The name by which standard input and output stand where sound files do.
#pragma once

#include <string>

namespace tvhost {

inline bool isStandardStream(const std::string& path) {
    return path == "-";
}

// What a message calls a sound that is read, or written.
inline std::string inputName(const std::string& path) {
    return isStandardStream(path) ? "standard input" : path;
}
inline std::string outputName(const std::string& path) {
    return isStandardStream(path) ? "standard output" : path;
}

} // namespace tvhost
