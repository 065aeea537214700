#include "tests/bundle/StandIns.h"

#include <dlfcn.h>
#include <sys/mman.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <map>

namespace {

struct Executable {
    const char* start = nullptr;
    std::size_t size = 0;
    std::string path;
};

Executable executable;
int objectsAlive = 0;
std::string bundleDirectory;

// A URL or a bundle.
struct Object {
    std::string directory;
    int owners;
};

Object* makeObject(const std::string& directory) {
    ++objectsAlive;
    return new Object{directory, 1};
}

Object* makeUrl(const void* allocator, const unsigned char* buffer, long length,
                unsigned char isDirectory) {
    return isDirectory != 0 && length > 0
               ? makeObject(std::string(reinterpret_cast<const char*>(buffer),
                                        static_cast<std::size_t>(length)))
               : nullptr;
}

// All who ask for one directory share its bundle.
std::map<std::string, Object*> bundles;

Object* makeBundle(const void* allocator, const Object* url) {
    bundleDirectory = url->directory;
    Object*& bundle = bundles[url->directory];
    if (bundle == nullptr) {
        bundle = makeObject(url->directory);
    } else {
        ++bundle->owners;
    }
    return bundle;
}

void release(Object* object) {
    if (--object->owners == 0) {
        const auto shared = bundles.find(object->directory);
        if (shared != bundles.end() && shared->second == object) {
            bundles.erase(shared);
        }
        --objectsAlive;
        delete object;
    }
}

int addressInfo(const void* address, Dl_info* info) {
    const auto* const place = static_cast<const char*>(address);
    if (place < executable.start || place >= executable.start + executable.size) {
        return 0;
    }
    *info = {executable.path.c_str(), const_cast<char*>(executable.start), nullptr, nullptr};
    return 1;
}

std::uint32_t tickCount() {
    return 0;
}

struct SineAndCosine {
    double sine;
    double cosine;
};

SineAndCosine sineAndCosine(double x) {
    return {std::sin(x), std::cos(x)};
}

void clearBytes(void* bytes, std::size_t count) {
    std::memset(bytes, 0, count);
}

// On Linux the compiler leaves pow(10.0, x) as it stands.
double powerOfTen(double x) {
    return std::pow(10.0, x);
}

// The two systems have different numbers for memory without a file.
void* mapMemory(void* where, std::size_t size, int protection, int flags, int file, long offset) {
    constexpr int kMacMapAnonymous = 0x1000;
    constexpr int kAlike = MAP_SHARED | MAP_PRIVATE | MAP_FIXED;
    const int own = (flags & kAlike) | ((flags & kMacMapAnonymous) != 0 ? MAP_ANONYMOUS : 0);
    return mmap(where, size, protection, own, file, offset);
}

void* pushPool() {
    return nullptr;
}

void popPool(void* pool) {}

std::uintptr_t stackGuard = 0x00ff0a0d5aa5c33c;

template <typename Function>
void* address(Function* function) {
    return reinterpret_cast<void*>(function);
}

} // namespace

void setStandInExecutable(const void* start, std::size_t size, const std::string& path) {
    executable = {static_cast<const char*>(start), size, path};
}

void* standInFor(const std::string& symbol) {
    static const std::map<std::string, void*> table = {
        {"_CFBundleCreate", address(makeBundle)},
        {"_CFRelease", address(release)},
        {"_CFURLCreateFromFileSystemRepresentation", address(makeUrl)},
        {"_TickCount", address(tickCount)},
        {"_dladdr", address(addressInfo)},
        {"_mmap", address(mapMemory)},
        {"_objc_autoreleasePoolPop", address(popPool)},
        {"_objc_autoreleasePoolPush", address(pushPool)},
        {"___bzero", address(clearBytes)},
        {"___exp10", address(powerOfTen)},
        {"___sincos_stret", address(sineAndCosine)},
        {"___stack_chk_guard", &stackGuard},
        {"___stderrp", &stderr},
        {"___stdoutp", &stdout},
    };
    const auto found = table.find(symbol);
    return found == table.end() ? nullptr : found->second;
}

int standInObjectsAlive() {
    return objectsAlive;
}

const std::string& standInBundleDirectory() {
    return bundleDirectory;
}
