#include "tests/bundle/MachOFile.h"

#include <llvm/Object/MachO.h>
#include <llvm/Support/LEB128.h>
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
        case llvm::MachO::LC_MAIN:
            entryPoint_ = object.getEntryPointCommand(command).entryoff;
            break;
        case llvm::MachO::LC_FUNCTION_STARTS: {
            const auto place = object.getLinkeditDataLoadCommand(command);
            const auto* const bytes =
                reinterpret_cast<const std::byte*>(parsed_->bytes->getBufferStart());
            readFunctionStarts(bytes + place.dataoff, bytes + place.dataoff + place.datasize);
            break;
        }
        default:
            break;
        }
    }
}

// Distances from one to the next, the first from the header; a zero ends them.
void MachOFile::readFunctionStarts(const std::byte* from, const std::byte* to) {
    const auto* at = reinterpret_cast<const std::uint8_t*>(from);
    const auto* const end = reinterpret_cast<const std::uint8_t*>(to);
    std::uint64_t address = 0;
    for (const Segment& segment : segments_) {
        address = segment.name == "__TEXT" ? segment.address : address;
    }
    while (at < end && *at != 0) {
        unsigned bytes = 0;
        const char* problem = nullptr;
        address += llvm::decodeULEB128(at, &bytes, end, &problem);
        if (problem != nullptr) {
            throw std::runtime_error(std::string("function starts: ") + problem);
        }
        functionStarts_.push_back(address);
        at += bytes;
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
    std::sort(rebases_.begin(), rebases_.end());

    const auto take = [this](const llvm::object::MachOBindEntry& entry, bool lazy) {
        const bool weak = (entry.flags() & llvm::MachO::BIND_SYMBOL_FLAGS_WEAK_IMPORT) != 0;
        binds_.push_back({entry.address(), entry.symbolName().str(), libraryOf(entry.ordinal()),
                          entry.addend(), weak, lazy});
    };
    llvm::Error bindError = llvm::Error::success();
    for (const auto& entry : object.bindTable(bindError)) {
        if (entry.typeName() != "pointer") {
            throw std::runtime_error("a bind of type " + entry.typeName().str());
        }
        take(entry, false);
    }
    check(std::move(bindError), "binds");
    llvm::Error lazyError = llvm::Error::success();
    for (const auto& entry : object.lazyBindTable(lazyError)) {
        take(entry, true);
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

MachOFile::Bind MachOFile::lazyBindAt(std::uint64_t offset) const {
    const auto opcodes = parsed_->object->getDyldInfoLazyBindOpcodes();
    const auto damaged = [&] {
        return std::runtime_error("no lazy bind at " + std::to_string(offset));
    };
    Bind bind{0, "", "", 0, false, true};
    for (std::uint64_t at = offset; at < opcodes.size();) {
        const std::uint8_t opcode = opcodes[at] & llvm::MachO::BIND_OPCODE_MASK;
        const std::uint8_t immediate = opcodes[at] & llvm::MachO::BIND_IMMEDIATE_MASK;
        ++at;
        switch (opcode) {
        case llvm::MachO::BIND_OPCODE_SET_SEGMENT_AND_OFFSET_ULEB: {
            unsigned bytes = 0;
            const auto distance =
                llvm::decodeULEB128(opcodes.data() + at, &bytes, opcodes.data() + opcodes.size());
            bind.address = segments_.at(immediate).address + distance;
            at += bytes;
            break;
        }
        case llvm::MachO::BIND_OPCODE_SET_DYLIB_ORDINAL_IMM:
            bind.library = libraryOf(immediate);
            break;
        case llvm::MachO::BIND_OPCODE_SET_SYMBOL_TRAILING_FLAGS_IMM:
            bind.weak = (immediate & llvm::MachO::BIND_SYMBOL_FLAGS_WEAK_IMPORT) != 0;
            while (at < opcodes.size() && opcodes[at] != 0) {
                bind.symbol += static_cast<char>(opcodes[at++]);
            }
            ++at;
            break;
        case llvm::MachO::BIND_OPCODE_DO_BIND:
            if (bind.address == 0 || bind.symbol.empty()) {
                throw damaged();
            }
            return bind;
        default:
            throw damaged();
        }
    }
    throw damaged();
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

bool MachOFile::isRebased(std::uint64_t address) const {
    return std::binary_search(rebases_.begin(), rebases_.end(), address);
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
