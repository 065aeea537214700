#include "host/presets/PresetFile.h"

#include "host/base/OutputFile.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <unistd.h>

namespace tvhost {

namespace {

// Beyond any preset; samplers keep their sounds elsewhere.
constexpr std::uintmax_t kLargestFile = std::uintmax_t{1} << 30;

constexpr const char* kRight = "; give a preset, .fxp or .fxb";

} // namespace

Preset readPreset(const std::string& path) {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status)) {
        throw UserError("there is no file " + path + kRight);
    }
    if (!fs::is_regular_file(status)) {
        throw UserError(path + " is not an ordinary file" + kRight);
    }
    if (fs::file_size(path, error) > kLargestFile) {
        throw UserError(path + " is larger than a preset can be" + kRight);
    }
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    if (!file) {
        throw UserError(path + " cannot be read: " + std::strerror(errno) + kRight);
    }
    try {
        return presetFromBytes(bytes.str());
    } catch (const UserError& fault) {
        throw UserError(path + " " + fault.what() + kRight);
    }
}

void writePreset(const std::string& path, const Preset& preset) {
    const std::string bytes = bytesOf(preset);
    OutputFile output(path);
    std::size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t count =
            write(output.descriptor(), bytes.data() + written, bytes.size() - written);
        if (count < 0 && errno != EINTR) {
            throw UserError(path + " cannot be written: " + std::strerror(errno) +
                            "; give a file in a folder with room for it");
        }
        written += static_cast<std::size_t>(count > 0 ? count : 0);
    }
    output.commit();
}

Preset::Kind presetKindFor(const std::string& path) {
    const std::string extension = std::filesystem::path(path).extension().string();
    if (extension == ".fxp" || extension == ".FXP") {
        return Preset::Kind::kProgram;
    }
    if (extension == ".fxb" || extension == ".FXB") {
        return Preset::Kind::kBank;
    }
    throw UserError(path + " is not the name of a preset; give one that ends with .fxp for a "
                           "program or .fxb for a bank");
}

} // namespace tvhost
