#include "host/check/watch/GuardedMemory.h"

#include <atomic>
#include <cstdint>

#include <sys/mman.h>

namespace {

constexpr std::size_t kPage = 4096;
constexpr std::size_t kRoom = std::size_t{64} << 30; // addresses, which cost nothing

char* room = nullptr;
std::uint32_t* ends = nullptr; // by the first page of each piece, the page behind its last
std::atomic<std::size_t> taken{0};

void* reserve(std::size_t size, int protection) {
    void* const place =
        mmap(nullptr, size, protection, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    return place == MAP_FAILED ? nullptr : place;
}

std::size_t pageOf(const void* memory) {
    return static_cast<std::size_t>(static_cast<const char*>(memory) - room) / kPage;
}

} // namespace

void GuardedMemory::begin() {
    ends =
        static_cast<std::uint32_t*>(reserve(kRoom / kPage * sizeof *ends, PROT_READ | PROT_WRITE));
    room = ends ? static_cast<char*>(reserve(kRoom, PROT_NONE)) : nullptr;
}

void* GuardedMemory::take(std::size_t size, std::size_t alignment) {
    if (!room || size < kLeastSize || size > kRoom / 2 || alignment > kMostAlignment) {
        return nullptr;
    }
    const std::size_t pages = (size + alignment - 1 + kPage - 1) / kPage;
    const std::size_t first = taken.fetch_add(pages + 1);
    if ((first + pages + 1) * kPage > kRoom) {
        return nullptr;
    }
    char* const begin = room + first * kPage;
    if (mprotect(begin, pages * kPage, PROT_READ | PROT_WRITE) != 0) {
        return nullptr;
    }
    const std::size_t start = (pages * kPage - size) & ~(alignment - 1);
    ends[first + start / kPage] = static_cast<std::uint32_t>(first + pages);
    return begin + start;
}

bool GuardedMemory::has(const void* memory) {
    return room && memory >= room && memory < room + kRoom;
}

void GuardedMemory::giveBack(void* memory) {
    const std::size_t first = pageOf(memory);
    char* const begin = room + first * kPage;
    const std::size_t size = (ends[first] - first) * kPage;
    // Anew, so that the system has its pages back.
    void* const anew = mmap(begin, size, PROT_NONE,
                            MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE | MAP_FIXED, -1, 0);
    if (anew == MAP_FAILED) {
        mprotect(begin, size, PROT_NONE);
    }
}

std::size_t GuardedMemory::sizeOf(const void* memory) {
    return static_cast<std::size_t>(room + std::size_t{ends[pageOf(memory)]} * kPage -
                                    static_cast<const char*>(memory));
}
