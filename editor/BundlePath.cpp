#include "editor/BundlePath.h"

std::optional<std::string> bundlePathOf(std::string executablePath) {
    constexpr int kLevels = 3;
    for (int level = 0; level < kLevels; ++level) {
        const std::size_t separator = executablePath.rfind('/');
        if (separator == std::string::npos) {
            return std::nullopt;
        }
        executablePath.resize(separator);
    }
    return executablePath;
}
