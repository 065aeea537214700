#include "tests/bundle/BundleImage.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

constexpr std::uint32_t kRead = 1;
constexpr std::uint32_t kWrite = 2;
constexpr std::uint32_t kExecute = 4;

int protectionOf(std::uint32_t machProtection) {
    return ((machProtection & kRead) != 0 ? PROT_READ : 0) |
           ((machProtection & kWrite) != 0 ? PROT_WRITE : 0) |
           ((machProtection & kExecute) != 0 ? PROT_EXEC : 0);
}

void* find(const std::vector<MachOFile::Symbol>& symbols, const std::string& name,
           const std::function<void*(std::uint64_t)>& addressOf) {
    const auto found =
        std::find_if(symbols.begin(), symbols.end(),
                     [&](const MachOFile::Symbol& symbol) { return symbol.name == name; });
    if (found == symbols.end()) {
        throw std::out_of_range("the bundle has no " + name);
    }
    return addressOf(found->address);
}

std::vector<const BundleImage*>& images() {
    static std::vector<const BundleImage*> all;
    return all;
}

} // namespace

extern "C" {

void tvdelayBindAtFirstUse(); // in LazyBinder.S, which calls this with what the helper pushed
void* tvdelayTargetOfFirstUse(const void* wordOfImage, std::uint64_t offset);
}

void* tvdelayTargetOfFirstUse(const void* wordOfImage, std::uint64_t offset) {
    const BundleImage* const image = BundleImage::ofCode(wordOfImage);
    if (image == nullptr) {
        std::fputs("A stub of no mapped image asked to be bound.\n", stderr);
        std::abort();
    }
    return image->bindLazily(offset);
}

BundleImage::BundleImage(const MachOFile& file, Resolver resolve, const Preparation& prepare)
    : file_(file), resolve_(std::move(resolve)) {
    findSpan();
    void* const memory =
        mmap(nullptr, span_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        throw std::runtime_error("there is no memory for the bundle");
    }
    memory_ = static_cast<char*>(memory);
    images().push_back(this);
    copySegments();
    setPointers();
    protectSegments();
    if (prepare) {
        prepare(*this);
    }
    runInitialisers();
}

BundleImage::~BundleImage() {
    images().erase(std::find(images().begin(), images().end(), this));
    munmap(memory_, span_);
}

void* BundleImage::exported(const std::string& name) const {
    return find(file_.exports(), name, [this](std::uint64_t at) { return addressOf(at); });
}

void* BundleImage::local(const std::string& name) const {
    return find(file_.symbols(), name, [this](std::uint64_t at) { return addressOf(at); });
}

void* BundleImage::addressOf(std::uint64_t fileAddress) const {
    return memory_ + (fileAddress - lowest_);
}

bool BundleImage::holds(const void* address) const {
    const auto* const place = static_cast<const char*>(address);
    return place >= memory_ && place < memory_ + span_;
}

const BundleImage* BundleImage::ofCode(const void* address) {
    const auto found =
        std::find_if(images().begin(), images().end(),
                     [&](const BundleImage* image) { return image->holds(address); });
    return found == images().end() ? nullptr : *found;
}

void* BundleImage::bindLazily(std::uint64_t offset) const {
    const MachOFile::Bind bind = file_.lazyBindAt(offset);
    void* const target = resolve_(bind);
    *static_cast<void**>(addressOf(bind.address)) = target;
    return target;
}

// A program's first segment is none of its own: nothing may ever lie at low addresses.
void BundleImage::findSpan() {
    std::uint64_t end = 0;
    lowest_ = ~0ull;
    for (const MachOFile::Segment& segment : file_.segments()) {
        if (segment.protection != 0) {
            lowest_ = std::min(lowest_, segment.address);
            end = std::max(end, segment.address + segment.size);
        }
    }
    if (end == 0) {
        throw std::runtime_error("the file has no segments");
    }
    span_ = end - lowest_;
}

void BundleImage::copySegments() {
    for (const MachOFile::Segment& segment : file_.segments()) {
        if (segment.fileSize > 0) {
            std::memcpy(addressOf(segment.address),
                        file_.bytesAt(segment.address, segment.fileSize), segment.fileSize);
        }
    }
}

void BundleImage::setPointers() {
    for (const std::uint64_t at : file_.rebases()) {
        auto* const pointer = static_cast<std::uint64_t*>(addressOf(at));
        *pointer = reinterpret_cast<std::uint64_t>(addressOf(*pointer));
    }
    for (const MachOFile::Bind& bind : file_.binds()) {
        if (bind.lazy) {
            continue;
        }
        auto* const pointer = static_cast<char**>(addressOf(bind.address));
        void* const target = bind.symbol == "dyld_stub_binder"
                                 ? reinterpret_cast<void*>(tvdelayBindAtFirstUse)
                                 : resolve_(bind);
        *pointer = static_cast<char*>(target) + bind.addend;
    }
}

void BundleImage::protectSegments() {
    for (const MachOFile::Segment& segment : file_.segments()) {
        if (segment.size > 0 && segment.protection != 0 &&
            mprotect(addressOf(segment.address), segment.size, protectionOf(segment.protection)) !=
                0) {
            throw std::runtime_error("the protection of " + segment.name + " can't be set");
        }
    }
}

void BundleImage::runInitialisers() {
    using Initialiser = void (*)(int, const char**, const char**, const char**, const void*);
    const MachOFile::Section* const section = file_.section("__DATA", "__mod_init_func");
    if (section == nullptr) {
        return;
    }
    const char* none = nullptr;
    auto* const initialisers = static_cast<Initialiser*>(addressOf(section->address));
    for (std::uint64_t i = 0; i < section->size / sizeof(Initialiser); ++i) {
        initialisers[i](0, &none, &none, &none, nullptr);
    }
}
