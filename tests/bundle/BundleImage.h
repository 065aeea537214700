// A Mach-O file's code, made ready to run in this process: mapped, its pointers set, its
// initialisers run. It has the processor and the calling convention of 64-bit Linux. Functions of
// libraries are bound at their first use, by the file's own stubs and helpers.
#pragma once

#include "tests/bundle/MachOFile.h"

#include <functional>
#include <string>

class BundleImage {
public:
    // Gives the address of what the file asks of a library. Never null.
    using Resolver = std::function<void*(const MachOFile::Bind&)>;

    // Between the setting of the pointers and the first initialiser.
    using Preparation = std::function<void(const BundleImage&)>;

    // Throws std::runtime_error when there is no memory at hand. `file` has to outlive the image.
    BundleImage(const MachOFile& file, Resolver resolve, const Preparation& prepare = {});
    ~BundleImage(); // nothing of the code may run any more
    BundleImage(const BundleImage&) = delete;
    BundleImage& operator=(const BundleImage&) = delete;

    // Both by the name with its leading underscore. Throws std::out_of_range when there is none.
    void* exported(const std::string& name) const;
    void* local(const std::string& name) const; // of the symbol table

    // Of the file's addresses, which have to be within its segments.
    void* addressOf(std::uint64_t fileAddress) const;

    const MachOFile& file() const { return file_; }
    const void* start() const { return memory_; }
    std::size_t size() const { return span_; }
    bool holds(const void* address) const;

    // The one that holds this address; null when none does.
    static const BundleImage* ofCode(const void* address);

    // Binds what the lazy opcodes at `offset` describe, and gives the function's address.
    void* bindLazily(std::uint64_t offset) const;

private:
    void findSpan();
    void copySegments();
    void setPointers();
    void protectSegments();
    void runInitialisers();

    const MachOFile& file_;
    Resolver resolve_;
    std::uint64_t lowest_ = 0; // file address of the memory's first byte
    std::uint64_t span_ = 0;   // bytes
    char* memory_;
};
