#include "tests/bundle/runtime/MappedCheck.h"

#include "tests/bundle/LinuxLibraries.h"
#include "tests/bundle/StandIns.h"
#include "tests/bundle/runtime/ClassRegistration.h"
#include "tests/bundle/runtime/MacSymbols.h"
#include "tests/bundle/runtime/MacViews.h"
#include "tests/bundle/runtime/UnwindRegistration.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>

namespace {

int bundleHandle; // its address stands for the bundle

void* openLibrary(const char* path, int mode) {
    return path == macBundle() + "/Contents/MacOS/TvDelay" ? &bundleHandle : nullptr;
}

const char* libraryError() {
    return "there is no such file";
}

void* librarySymbol(void* handle, const char* name) {
    return handle == &bundleHandle && std::strcmp(name, "VSTPluginMain") == 0
               ? reinterpret_cast<void*>(MacViews::shared().entry())
               : nullptr;
}

int closeLibrary(void* handle) {
    return handle == &bundleHandle ? 0 : -1;
}

int executablePath(char* buffer, std::uint32_t* size) {
    const std::string& path = macCheck();
    if (path.size() >= *size) {
        return -1;
    }
    std::memcpy(buffer, path.c_str(), path.size() + 1);
    return 0;
}

// It knows the machine's model, and nothing else.
int systemValue(const char* name, void* value, std::size_t* size, void* to, std::size_t toSize) {
    const std::string model = "Test1,1";
    if (std::strcmp(name, "hw.model") != 0 || *size <= model.size()) {
        return -1;
    }
    std::memcpy(value, model.c_str(), model.size() + 1);
    return 0;
}

template <typename Function>
void* address(Function* function) {
    return reinterpret_cast<void*>(function);
}

void* systemSymbol(const std::string& symbol) {
    static const std::map<std::string, void*> table = {
        {"_dlopen", address(openLibrary)},       {"_dlerror", address(libraryError)},
        {"_dlsym", address(librarySymbol)},      {"_dlclose", address(closeLibrary)},
        {"_sysctlbyname", address(systemValue)}, {"__NSGetExecutablePath", address(executablePath)},
    };
    const auto found = table.find(symbol);
    return found == table.end() ? nullptr : found->second;
}

void* resolve(Traps& traps, const MachOFile::Bind& bind) {
    for (void* (*const ask)(const std::string&) :
         {systemSymbol, macSymbol, standInFor, inCLibrary}) {
        if (void* const found = ask(bind.symbol)) {
            return found;
        }
    }
    return traps.of(bind.symbol);
}

} // namespace

int runMappedCheck(const std::vector<std::string>& arguments) {
    static Traps traps;
    static const BundleImage image(
        macCheckCode(), [](const MachOFile::Bind& bind) { return resolve(traps, bind); });
    static const ClassRegistration selectors(image);
    static const UnwindRegistration unwinding(image);
    std::vector<std::string> words = {macCheck()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    std::transform(words.begin(), words.end(), std::back_inserter(pointers),
                   [](std::string& word) { return word.data(); });
    pointers.push_back(nullptr);
    auto* const main = reinterpret_cast<int (*)(int, char**)>(
        const_cast<char*>(static_cast<const char*>(image.start())) + macCheckCode().entryPoint());
    return main(static_cast<int>(words.size()), pointers.data());
}
