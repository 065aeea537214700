#include "tests/editor/GnustepHome.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include <pwd.h>
#include <unistd.h>

namespace {

constexpr char kSystemConfiguration[] = "/etc/GNUstep/GNUstep.conf";

// GNUstep takes the home out of the list of users, whatever HOME says, and its folders relative to
// that.
std::string fromTheUsersHome(const std::filesystem::path& folder) {
    const passwd* const user = getpwuid(getuid());
    return folder.lexically_relative(user != nullptr ? user->pw_dir : "/").string();
}

// The system's own, with all folders of the user's below `folder`.
std::string configurationFor(const std::filesystem::path& folder) {
    std::ifstream system(kSystemConfiguration);
    std::string text;
    for (std::string line; std::getline(system, line);) {
        const std::size_t end = line.find("=GNUstep");
        if (line.rfind("GNUSTEP_USER_", 0) == 0 && end != std::string::npos) {
            line.replace(end, 8, "=" + fromTheUsersHome(folder));
        }
        text += line + "\n";
    }
    return text;
}

void writePrivately(const std::filesystem::path& file, const std::string& text) {
    std::ofstream(file) << text;
    std::filesystem::permissions(file, std::filesystem::perms::owner_read |
                                           std::filesystem::perms::owner_write);
}

} // namespace

GnustepHome::GnustepHome(const std::string& settings) {
    std::string pattern = (std::filesystem::temp_directory_path() / "tvdelay-home-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no folder for a home");
    }
    folder_ = pattern;
    const std::filesystem::path user = folder_ / "GNUstep";
    const std::filesystem::path configuration = folder_ / "GNUstep.conf";
    writePrivately(configuration, configurationFor(user));
    if (!settings.empty()) {
        std::filesystem::create_directories(user / "Defaults");
        writePrivately(user / "Defaults" / "NSGlobalDomain.plist", settings);
    }
    setenv("GNUSTEP_CONFIG_FILE", configuration.c_str(), 1);
    setenv("HOME", folder_.c_str(), 1);
}

GnustepHome::~GnustepHome() {
    std::filesystem::remove_all(folder_);
}

bool GnustepHome::isUntouched() const {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_)) {
        const std::string name = entry.path().filename().string();
        if (name != "GNUstep.conf" && name != "GNUstep" && name != "Defaults" &&
            name != "NSGlobalDomain.plist") {
            return false;
        }
    }
    return true;
}
