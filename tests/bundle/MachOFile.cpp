#include "tests/bundle/MachOFile.h"

#include <llvm/Object/MachO.h>
#include <llvm/Support/MemoryBuffer.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace {

using llvm::object::MachOObjectFile;

void check(llvm::Error error, const std::string& what) {
    if (error) {
        throw std::runtime_error(what + ": " + llvm::toString(std::move(error)));
    }
}

std::string versionText(std::uint32_t packed) {
    return std::to_string(packed >> 16) + "." + std::to_string(packed >> 8 & 0xff);
}

std::string fixedText(const char (&field)[16]) {
    return std::string(field, strnlen(field, sizeof(field)));
}

} // namespace

struct MachOFile::Parsed {
    std::unique_ptr<llvm::MemoryBuffer> bytes;
    std::unique_ptr<MachOObjectFile> object;
};

MachOFile::MachOFile(const std::string& path) : parsed_(std::make_unique<Parsed>()) {
    auto bytes = llvm::MemoryBuffer::getFile(path);
    if (!bytes) {
        throw std::runtime_error(path + ": " + bytes.getError().message());
    }
    parsed_->bytes = std::move(*bytes);
    auto object = llvm::object::ObjectFile::createMachOObjectFile(*parsed_->bytes);
    check(object.takeError(), path);
    parsed_->object = std::move(*object);
    if (!parsed_->object->is64Bit()) {
        throw std::runtime_error(path + " is not a 64-bit file");
    }
    readLoadCommands();
    readTables();
    readSymbols();
}

MachOFile::~MachOFile() = default;

std::uint32_t MachOFile::processor() const {
    return parsed_->object->getHeader64().cputype;
}

std::uint32_t MachOFile::fileType() const {
    return parsed_->object->getHeader64().filetype;
}

std::uint32_t MachOFile::flags() const {
    return parsed_->object->getHeader64().flags;
}

void MachOFile::readLoadCommands() {
    const MachOObjectFile& object = *parsed_->object;
    for (const auto& command : object.load_commands()) {
        switch (command.C.cmd) {
        case llvm::MachO::LC_SEGMENT_64: {
            const auto segment = object.getSegment64LoadCommand(command);
            segments_.push_back({fixedText(segment.segname), segment.vmaddr, segment.vmsize,
                                 segment.fileoff, segment.filesize, segment.initprot});
            for (unsigned i = 0; i < segment.nsects; ++i) {
                const auto section = object.getSection64(command, i);
                sections_.push_back({fixedText(section.segname), fixedText(section.sectname),
                                     section.addr, section.size});
            }
            break;
        }
        case llvm::MachO::LC_LOAD_DYLIB:
        case llvm::MachO::LC_LOAD_WEAK_DYLIB:
        case llvm::MachO::LC_REEXPORT_DYLIB: {
            const auto library = object.getDylibIDLoadCommand(command);
            libraries_.push_back({command.Ptr + library.dylib.name,
                                  versionText(library.dylib.compatibility_version)});
            break;
        }
        case llvm::MachO::LC_VERSION_MIN_MACOSX:
            deploymentTarget_ = versionText(object.getVersionMinLoadCommand(command).version);
            break;
        default:
            break;
        }
    }
}

std::string MachOFile::libraryOf(int ordinal) const {
    return ordinal >= 1 ? libraries_.at(static_cast<std::size_t>(ordinal) - 1).path : "";
}

void MachOFile::readTables() {
    MachOObjectFile& object = *parsed_->object;
    llvm::Error error = llvm::Error::success();
    for (const auto& entry : object.rebaseTable(error)) {
        if (entry.typeName() != "pointer") {
            throw std::runtime_error("a rebase of type " + entry.typeName().str());
        }
        rebases_.push_back(entry.address());
    }
    check(std::move(error), "rebases");

    const auto take = [this](const llvm::object::MachOBindEntry& entry) {
        const bool weak = (entry.flags() & llvm::MachO::BIND_SYMBOL_FLAGS_WEAK_IMPORT) != 0;
        binds_.push_back({entry.address(), entry.symbolName().str(), libraryOf(entry.ordinal()),
                          entry.addend(), weak});
    };
    llvm::Error bindError = llvm::Error::success();
    for (const auto& entry : object.bindTable(bindError)) {
        if (entry.typeName() != "pointer") {
            throw std::runtime_error("a bind of type " + entry.typeName().str());
        }
        take(entry);
    }
    check(std::move(bindError), "binds");
    llvm::Error lazyError = llvm::Error::success();
    for (const auto& entry : object.lazyBindTable(lazyError)) {
        take(entry);
    }
    check(std::move(lazyError), "lazy binds");
    std::sort(binds_.begin(), binds_.end(),
              [](const Bind& a, const Bind& b) { return a.address < b.address; });

    llvm::Error exportError = llvm::Error::success();
    for (const auto& entry : object.exports(exportError)) {
        exports_.push_back({entry.name().str(), entry.address()});
    }
    check(std::move(exportError), "exports");
}

void MachOFile::readSymbols() {
    for (const auto& symbol : parsed_->object->symbols()) {
        auto flags = symbol.getFlags();
        check(flags.takeError(), "symbols");
        if ((*flags & llvm::object::SymbolRef::SF_Undefined) != 0) {
            continue;
        }
        auto name = symbol.getName();
        check(name.takeError(), "symbols");
        auto address = symbol.getAddress();
        check(address.takeError(), "symbols");
        symbols_.push_back({name->str(), *address});
    }
}

const MachOFile::Section* MachOFile::section(const std::string& segment,
                                             const std::string& name) const {
    const auto found = std::find_if(sections_.begin(), sections_.end(), [&](const Section& each) {
        return each.segment == segment && each.name == name;
    });
    return found == sections_.end() ? nullptr : &*found;
}

const MachOFile::Bind* MachOFile::bindAt(std::uint64_t address) const {
    const auto found =
        std::lower_bound(binds_.begin(), binds_.end(), address,
                         [](const Bind& bind, std::uint64_t at) { return bind.address < at; });
    return found != binds_.end() && found->address == address ? &*found : nullptr;
}

const std::byte* MachOFile::bytesAt(std::uint64_t address, std::size_t size) const {
    for (const Segment& segment : segments_) {
        if (address >= segment.address && address + size <= segment.address + segment.fileSize) {
            return reinterpret_cast<const std::byte*>(parsed_->bytes->getBufferStart()) +
                   segment.fileOffset + (address - segment.address);
        }
    }
    throw std::out_of_range("the file holds nothing for address " + std::to_string(address));
}

std::string MachOFile::textAt(std::uint64_t address) const {
    std::string text;
    for (char next; (next = at<char>(address + text.size())) != 0;) {
        text += next;
    }
    return text;
}
