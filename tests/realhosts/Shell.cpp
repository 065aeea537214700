#include "tests/realhosts/Shell.h"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include <sys/wait.h>

HostHome::HostHome() {
    std::string name = (std::filesystem::temp_directory_path() / "tvdelay-home-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    folder = name;
}

HostHome::~HostHome() {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

std::string HostHome::insideHome(const std::string& command) const {
    return "cd '" + folder.string() + "' && exec env -u WAYLAND_DISPLAY -u VST_PATH " +
           "-u LXVST_PATH -u XDG_CACHE_HOME -u XDG_CONFIG_HOME HOME='" + folder.string() +
           "' LC_ALL=C " + command;
}

ShellResult HostHome::run(const std::string& command) const {
    const std::string whole = insideHome("env -u DISPLAY " + command) + " 2>&1";
    std::FILE* const pipe = popen(whole.c_str(), "r");
    if (pipe == nullptr) {
        throw std::runtime_error("no shell");
    }
    ShellResult result;
    char part[4096];
    for (std::size_t size; (size = std::fread(part, 1, sizeof(part), pipe)) > 0;) {
        result.out.append(part, size);
    }
    const int status = pclose(pipe);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}
