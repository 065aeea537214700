// A Mach-O file: what its load commands and tables say, and its bytes by the address they go to.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class MachOFile {
public:
    struct Segment {
        std::string name;
        std::uint64_t address;
        std::uint64_t size;
        std::uint64_t fileOffset;
        std::uint64_t fileSize;   // what is beyond it is zero
        std::uint32_t protection; // of VM_PROT_READ 1, VM_PROT_WRITE 2, VM_PROT_EXECUTE 4
    };
    struct Section {
        std::string segment;
        std::string name;
        std::uint64_t address;
        std::uint64_t size;
    };
    struct Library {
        std::string path;
        std::string compatibilityVersion;
    };
    // A pointer that is to hold the address of another image's symbol.
    struct Bind {
        std::uint64_t address;
        std::string symbol;
        std::string library; // its path; empty for a look-up without one
        std::int64_t addend;
        bool weak; // may stay null
        bool lazy; // set at the first use
    };
    struct Symbol {
        std::string name;
        std::uint64_t address;
    };

    // Throws std::runtime_error for what is no 64-bit Mach-O file or has damaged tables.
    explicit MachOFile(const std::string& path);
    ~MachOFile();
    MachOFile(const MachOFile&) = delete;
    MachOFile& operator=(const MachOFile&) = delete;

    std::uint32_t processor() const; // CPU_TYPE_...
    std::uint32_t fileType() const;  // MH_...
    std::uint32_t flags() const;     // MH_...

    // Where a program starts, counted from the start of its text; 0 when it does not tell.
    std::uint64_t entryPoint() const { return entryPoint_; }
    // Empty when no load command has it.
    const std::string& deploymentTarget() const { return deploymentTarget_; }
    const std::vector<Segment>& segments() const { return segments_; }
    const std::vector<Section>& sections() const { return sections_; }
    const std::vector<Library>& libraries() const { return libraries_; }
    const std::vector<std::uint64_t>& rebases() const { return rebases_; } // of pointers
    const std::vector<Bind>& binds() const { return binds_; } // those of first use as well
    const std::vector<Symbol>& exports() const { return exports_; }
    const std::vector<Symbol>& symbols() const { return symbols_; } // with an address in the file
    const std::vector<std::uint64_t>& functionStarts() const { return functionStarts_; }

    // The bind that the lazy opcodes at `offset` describe, which is what a stub's helper names.
    // Throws std::runtime_error when there is none.
    Bind lazyBindAt(std::uint64_t offset) const;

    // Null when there is none.
    const Section* section(const std::string& segment, const std::string& name) const;
    const Bind* bindAt(std::uint64_t address) const;
    bool isRebased(std::uint64_t address) const;

    // `size` bytes that go to `address`. Throws std::out_of_range when the file does not hold them.
    const std::byte* bytesAt(std::uint64_t address, std::size_t size) const;
    // The same for text up to its terminator.
    std::string textAt(std::uint64_t address) const;
    template <typename T>
    const T& at(std::uint64_t address) const {
        return *reinterpret_cast<const T*>(bytesAt(address, sizeof(T)));
    }

private:
    struct Parsed; // the file as the parser holds it
    void readLoadCommands();
    void readTables();
    void readFunctionStarts(const std::byte* from, const std::byte* to);
    void readSymbols();
    std::string libraryOf(int ordinal) const;

    std::unique_ptr<Parsed> parsed_;
    std::uint64_t entryPoint_ = 0;
    std::string deploymentTarget_;
    std::vector<Segment> segments_;
    std::vector<Section> sections_;
    std::vector<Library> libraries_;
    std::vector<std::uint64_t> rebases_;
    std::vector<Bind> binds_;
    std::vector<Symbol> exports_;
    std::vector<Symbol> symbols_;
    std::vector<std::uint64_t> functionStarts_;
};
