#include "tests/realhosts/HostHome.h"

ProcessResult HostHome::run(const std::string& command) const {
    Process::Options whole = options();
    whole.environment.push_back("DISPLAY");
    return runShell("exec 2>&1; " + command, whole);
}

std::unique_ptr<Process> HostHome::start(const std::string& command,
                                         const std::string& logName) const {
    Process::Options whole = options();
    whole.log = folder_.file(logName);
    return std::make_unique<Process>("/bin/sh", std::vector<std::string>{"-c", command}, whole);
}

Process::Options HostHome::options() const {
    Process::Options options;
    options.folder = path().string();
    options.environment = {"WAYLAND_DISPLAY", "VST_PATH",        "LXVST_PATH",
                           "XDG_CACHE_HOME",  "XDG_CONFIG_HOME", "HOME=" + path().string(),
                           "LC_ALL=C"};
    return options;
}
