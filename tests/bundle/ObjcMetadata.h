// The Objective-C classes and protocols of a Mach-O file, as its runtime will read them.
#pragma once

#include "tests/bundle/MachOFile.h"

#include <cstdint>
#include <string>
#include <vector>

// Type encodings are without frame offsets and without what structures consist of.
struct ObjcMethod {
    std::string selector;
    std::string types;
};

struct ObjcVariable {
    std::string name;
    std::string type;
};

struct ObjcClass {
    std::string name;
    std::string superclass;
    std::vector<std::string> protocols; // that it names itself
    std::vector<ObjcVariable> variables;
    std::vector<ObjcMethod> methods; // of instances

    // Where the runtime puts it, in bytes from an instance's start and into its two objects.
    std::uint32_t start = 0; // of the first variable of its own
    std::uint32_t size = 0;
    std::vector<std::uint32_t> offsets{}; // of the variables
    std::uint32_t flags = 0;
    std::string rootMetaclass{}; // whose instance its metaclass is
    std::string superMetaclass{};
    std::uint32_t metaclassFlags = 0;
    std::vector<ObjcMethod> classMethods{};

    const ObjcMethod* method(const std::string& selector) const; // null when there is none
};

struct ObjcProtocol {
    std::string name;
    std::vector<ObjcMethod> required; // of instances
    std::vector<ObjcMethod> optional;
};

class ObjcMetadata {
public:
    // Throws std::runtime_error or std::out_of_range for damaged metadata: a pointer that the
    // system's loader would leave as it is in the file counts as such.
    explicit ObjcMetadata(const MachOFile& file);

    const std::vector<ObjcClass>& classes() const { return classes_; }
    const std::vector<ObjcProtocol>& protocols() const { return protocols_; }
    const std::vector<std::string>& sentSelectors() const { return sentSelectors_; }

private:
    ObjcClass readClass(std::uint64_t address) const;
    ObjcProtocol readProtocol(std::uint64_t address) const;
    std::uint64_t pointerAt(std::uint64_t place) const;
    std::string classOf(std::uint64_t place, const std::string& prefix) const;
    std::uint64_t dataOf(std::uint64_t classAddress) const;
    std::string textAt(std::uint64_t place) const;
    std::vector<ObjcMethod> methodsAt(std::uint64_t address) const;
    std::vector<ObjcVariable> variablesAt(std::uint64_t address) const;
    std::vector<std::uint32_t> offsetsAt(std::uint64_t address) const;
    std::vector<std::string> protocolNamesAt(std::uint64_t address) const;
    std::vector<std::uint64_t> pointersIn(const std::string& section) const;

    const MachOFile& file_;
    std::vector<ObjcClass> classes_;
    std::vector<ObjcProtocol> protocols_;
    std::vector<std::string> sentSelectors_;
};
