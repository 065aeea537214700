#include "host/check/CheckRun.h"

#include <utility>

namespace tvhost {

namespace {

// FNV-1a, the same on every system and in every version.
std::uint64_t hashOf(const std::string& text) {
    std::uint64_t hash = 0xCBF29CE484222325u;
    for (const char character : text) {
        hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001B3u;
    }
    return hash;
}

} // namespace

CheckRun::CheckRun(std::filesystem::path file, const std::string& checkName, std::uint64_t seed,
                   CheckReport& report, LastCall& lastCall)
    : file_(std::move(file)), report_(report), lastCall_(lastCall),
      random_(seed ^ hashOf(checkName)) {}

const std::shared_ptr<const PluginModule>& CheckRun::module() {
    if (!module_) {
        lastCall_.note(LastCall::kLoad);
        module_ = std::make_shared<const PluginModule>(file_);
    }
    return module_;
}

void CheckRun::unload() {
    lastCall_.note(LastCall::kUnload);
    module_.reset();
}

void CheckRun::finding(const std::string& topic, const std::string& text) {
    found_ = true;
    report_.finding(topic, text);
}

float CheckRun::uniform() {
    // Not a distribution of the library's: those differ between libraries.
    return static_cast<float>((static_cast<double>(random_() >> 11) + 0.5) / 9007199254740992.0);
}

int CheckRun::number(int least, int most) {
    return least + static_cast<int>(random_() % static_cast<std::uint64_t>(most - least + 1));
}

} // namespace tvhost
