// A Mach-O file's code, made ready to run in this process: mapped, its pointers set, its
// initialisers run. It has the processor and the calling convention of 64-bit Linux.
#pragma once

#include "tests/bundle/MachOFile.h"

#include <functional>
#include <string>

class BundleImage {
public:
    // Gives the address of what the file asks of a library. Never null.
    using Resolver = std::function<void*(const MachOFile::Bind&)>;

    // Throws std::runtime_error when there is no memory at hand. `file` has to outlive the image.
    BundleImage(const MachOFile& file, const Resolver& resolve);
    ~BundleImage(); // nothing of the code may run any more
    BundleImage(const BundleImage&) = delete;
    BundleImage& operator=(const BundleImage&) = delete;

    // Both by the name with its leading underscore. Throws std::out_of_range when there is none.
    void* exported(const std::string& name) const;
    void* local(const std::string& name) const; // of the symbol table

    const void* start() const { return memory_; }
    std::size_t size() const { return span_; }

private:
    void* addressOf(std::uint64_t fileAddress) const;
    void copySegments();
    void setPointers(const Resolver& resolve);
    void protectSegments();
    void runInitialisers();

    const MachOFile& file_;
    std::uint64_t span_ = 0; // bytes, from file address 0 on
    char* memory_;
};
