#include "tests/bundle/ObjcMetadata.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <stdexcept>

namespace {

// The runtime's layouts on 64-bit systems. A pointer to another image is 0 in the file and has a
// bind; all others hold addresses of the file. The addresses of no list are 0.
struct ClassLayout {
    std::uint64_t metaclass;
    std::uint64_t superclass;
    std::uint64_t cache;
    std::uint64_t virtualTable;
    std::uint64_t data; // of ClassData; the low bits are the runtime's
};

struct ClassData {
    std::uint32_t flags;
    std::uint32_t start;
    std::uint32_t size;
    std::uint32_t reserved;
    std::uint64_t strongLayout;
    std::uint64_t name;
    std::uint64_t methods;
    std::uint64_t protocols;
    std::uint64_t variables;
    std::uint64_t weakLayout;
    std::uint64_t properties;
};

struct ListHead {
    std::uint32_t entrySize;
    std::uint32_t count;
};

struct MethodLayout {
    std::uint64_t selector;
    std::uint64_t types;
    std::uint64_t code;
};

struct VariableLayout {
    std::uint64_t offset;
    std::uint64_t name;
    std::uint64_t type;
    std::uint32_t alignment;
    std::uint32_t size;
};

struct ProtocolLayout {
    std::uint64_t metaclass;
    std::uint64_t name;
    std::uint64_t protocols;
    std::uint64_t requiredMethods;
    std::uint64_t requiredClassMethods;
    std::uint64_t optionalMethods;
    std::uint64_t optionalClassMethods;
};

const std::string kClassPrefix = "_OBJC_CLASS_$_";

// Behind the bracket that closes the one before `at`.
std::size_t behindStructure(const std::string& types, std::size_t at) {
    for (int depth = 1; depth > 0; ++at) {
        depth += types.at(at) == '{' ? 1 : types.at(at) == '}' ? -1 : 0;
    }
    return at;
}

std::string shortened(const std::string& types) {
    std::string kept;
    for (std::size_t at = 0; at < types.size();) {
        if (types[at] == '{') {
            const std::size_t nameEnd = types.find_first_of("=}", at);
            kept += types.substr(at, nameEnd - at) + "}";
            at = behindStructure(types, at + 1);
        } else if (types[at] == '"') {
            const std::size_t end = types.find('"', at + 1) + 1;
            kept += types.substr(at, end - at);
            at = end;
        } else {
            if (std::isdigit(static_cast<unsigned char>(types[at])) == 0) {
                kept += types[at];
            }
            ++at;
        }
    }
    return kept;
}

} // namespace

const ObjcMethod* ObjcClass::method(const std::string& selector) const {
    const auto found = std::find_if(methods.begin(), methods.end(), [&](const ObjcMethod& each) {
        return each.selector == selector;
    });
    return found == methods.end() ? nullptr : &*found;
}

ObjcMetadata::ObjcMetadata(const MachOFile& file) : file_(file) {
    for (const std::uint64_t address : pointersIn("__objc_classlist")) {
        classes_.push_back(readClass(address));
    }
    for (const std::uint64_t address : pointersIn("__objc_protolist")) {
        protocols_.push_back(readProtocol(address));
    }
}

std::vector<std::uint64_t> ObjcMetadata::pointersIn(const std::string& name) const {
    std::vector<std::uint64_t> pointers;
    const MachOFile::Section* const section = file_.section("__DATA", name);
    if (section == nullptr) {
        throw std::runtime_error("the file has no section " + name);
    }
    for (std::uint64_t at = 0; at < section->size; at += sizeof(std::uint64_t)) {
        pointers.push_back(file_.at<std::uint64_t>(section->address + at));
    }
    return pointers;
}

ObjcClass ObjcMetadata::readClass(std::uint64_t address) const {
    const auto& data = file_.at<ClassData>(file_.at<ClassLayout>(address).data & ~7ull);
    return {file_.textAt(data.name), superclassOf(address), protocolNamesAt(data.protocols),
            variablesAt(data.variables), methodsAt(data.methods)};
}

ObjcProtocol ObjcMetadata::readProtocol(std::uint64_t address) const {
    const auto& layout = file_.at<ProtocolLayout>(address);
    return {file_.textAt(layout.name), methodsAt(layout.requiredMethods),
            methodsAt(layout.optionalMethods)};
}

std::string ObjcMetadata::superclassOf(std::uint64_t classAddress) const {
    const std::uint64_t place = classAddress + offsetof(ClassLayout, superclass);
    const MachOFile::Bind* const bind = file_.bindAt(place);
    if (bind == nullptr) {
        return classNameAt(file_.at<std::uint64_t>(place));
    }
    if (bind->symbol.compare(0, kClassPrefix.size(), kClassPrefix) != 0) {
        throw std::runtime_error("a superclass is bound to " + bind->symbol);
    }
    return bind->symbol.substr(kClassPrefix.size());
}

std::string ObjcMetadata::classNameAt(std::uint64_t address) const {
    const auto& data = file_.at<ClassData>(file_.at<ClassLayout>(address).data & ~7ull);
    return file_.textAt(data.name);
}

std::vector<ObjcMethod> ObjcMetadata::methodsAt(std::uint64_t address) const {
    std::vector<ObjcMethod> methods;
    if (address == 0) {
        return methods;
    }
    const auto& head = file_.at<ListHead>(address);
    for (std::uint32_t i = 0; i < head.count; ++i) {
        const auto& method =
            file_.at<MethodLayout>(address + sizeof(ListHead) + i * sizeof(MethodLayout));
        methods.push_back({file_.textAt(method.selector), shortened(file_.textAt(method.types))});
    }
    return methods;
}

std::vector<ObjcVariable> ObjcMetadata::variablesAt(std::uint64_t address) const {
    std::vector<ObjcVariable> variables;
    if (address == 0) {
        return variables;
    }
    const auto& head = file_.at<ListHead>(address);
    for (std::uint32_t i = 0; i < head.count; ++i) {
        const auto& variable =
            file_.at<VariableLayout>(address + sizeof(ListHead) + i * sizeof(VariableLayout));
        variables.push_back({file_.textAt(variable.name), shortened(file_.textAt(variable.type))});
    }
    return variables;
}

std::vector<std::string> ObjcMetadata::protocolNamesAt(std::uint64_t address) const {
    std::vector<std::string> names;
    if (address == 0) {
        return names;
    }
    const auto count = file_.at<std::uint64_t>(address);
    for (std::uint64_t i = 1; i <= count; ++i) {
        const auto protocol = file_.at<std::uint64_t>(address + i * sizeof(std::uint64_t));
        names.push_back(file_.textAt(file_.at<ProtocolLayout>(protocol).name));
    }
    return names;
}
