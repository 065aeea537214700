#include "tests/bundle/MacBundle.h"

#include "tests/bundle/LinuxLibraries.h"
#include "tests/bundle/StandIns.h"

#include <filesystem>
#include <stdexcept>
#include <utility>

namespace {

const std::string& executablePath() {
    static const std::string path = macBundle() + "/Contents/MacOS/TvDelay";
    return path;
}

} // namespace

const std::string& macBundle() {
    static const std::string path = TVDELAY_MACOS_BUNDLE;
    if (!std::filesystem::exists(path)) {
        throw std::runtime_error("there is no macOS bundle at " + path + "; ./dev mac builds it");
    }
    return path;
}

const MachOFile& macBundleCode() {
    static const MachOFile file(executablePath());
    return file;
}

const std::string& macCheck() {
    static const std::string path =
        std::filesystem::path(macBundle()).parent_path() / "mac-check/mac-check";
    return path;
}

const MachOFile& macCheckCode() {
    static const MachOFile file(macCheck());
    return file;
}

RunningMacBundle::RunningMacBundle() : RunningMacBundle({}, {}) {}

RunningMacBundle::RunningMacBundle(BundleImage::Resolver first,
                                   const BundleImage::Preparation& prepare)
    : first_(std::move(first)),
      image_(
          macBundleCode(), [this](const MachOFile::Bind& bind) { return resolve(bind); }, prepare) {
    setStandInExecutable(image_.start(), image_.size(), executablePath());
}

RunningMacBundle::Entry RunningMacBundle::entry() const {
    return reinterpret_cast<Entry>(image_.exported("_VSTPluginMain"));
}

void* RunningMacBundle::resolve(const MachOFile::Bind& bind) {
    void* found = first_ ? first_(bind) : nullptr;
    if (found == nullptr) {
        found = standInFor(bind.symbol);
    }
    if (found == nullptr && bind.library == "/usr/lib/libc++.1.dylib") {
        found = inCxxLibrary(bind.symbol);
    } else if (found == nullptr && bind.library == "/usr/lib/libSystem.B.dylib") {
        found = inCLibrary(bind.symbol);
    }
    return found != nullptr ? found : traps_.of(bind.symbol);
}
