#include "tests/bundle/Traps.h"

#include <sys/mman.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace {

constexpr std::size_t kSize = 65536;

// mov rdi, name; mov rax, function; and rsp, -16; call rax
constexpr unsigned char kCode[] = {0x48, 0xbf, 0, 0, 0, 0, 0,    0,    0,    0,    0x48, 0xb8,
                                   0,    0,    0, 0, 0, 0, 0x48, 0x83, 0xe4, 0xf0, 0xff, 0xd0};
constexpr std::size_t kNameAt = 2;
constexpr std::size_t kFunctionAt = 12;
constexpr std::size_t kSpacing = 32;

[[noreturn]] void report(const char* name) {
    std::fprintf(stderr, "The bundle's code asked for %s, which can't run here.\n", name);
    std::abort();
}

} // namespace

Traps::Traps() {
    void* const memory = mmap(nullptr, kSize, PROT_READ | PROT_WRITE | PROT_EXEC,
                              MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        throw std::runtime_error("there is no memory for the traps");
    }
    memory_ = static_cast<char*>(memory);
}

Traps::~Traps() {
    munmap(memory_, kSize);
}

void* Traps::of(const std::string& symbol) {
    const auto [entry, isNew] = traps_.try_emplace(symbol, memory_ + traps_.size() * kSpacing);
    if (!isNew) {
        return entry->second;
    }
    if (traps_.size() * kSpacing > kSize) {
        throw std::length_error("too many traps");
    }
    const char* const name = entry->first.c_str();
    void (*const function)(const char*) = report;
    std::memcpy(entry->second, kCode, sizeof(kCode));
    std::memcpy(entry->second + kNameAt, &name, sizeof(name));
    std::memcpy(entry->second + kFunctionAt, &function, sizeof(function));
    return entry->second;
}
