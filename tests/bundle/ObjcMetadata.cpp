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
const std::string kMetaclassPrefix = "_OBJC_METACLASS_$_";

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
    for (const std::uint64_t address : pointersIn("__objc_selrefs")) {
        sentSelectors_.push_back(file.textAt(address));
    }
}

// What the pointer at `place` leads to in this file; 0 for null.
std::uint64_t ObjcMetadata::pointerAt(std::uint64_t place) const {
    const auto value = file_.at<std::uint64_t>(place);
    if (value != 0 && !file_.isRebased(place)) {
        throw std::runtime_error("the pointer at " + std::to_string(place) + " is not rebased");
    }
    return value;
}

std::string ObjcMetadata::textAt(std::uint64_t place) const {
    return file_.textAt(pointerAt(place));
}

std::vector<std::uint64_t> ObjcMetadata::pointersIn(const std::string& name) const {
    std::vector<std::uint64_t> pointers;
    const MachOFile::Section* const section = file_.section("__DATA", name);
    if (section == nullptr) {
        return pointers;
    }
    for (std::uint64_t at = 0; at < section->size; at += sizeof(std::uint64_t)) {
        pointers.push_back(pointerAt(section->address + at));
    }
    return pointers;
}

std::uint64_t ObjcMetadata::dataOf(std::uint64_t classAddress) const {
    return pointerAt(classAddress + offsetof(ClassLayout, data)) & ~7ull;
}

ObjcClass ObjcMetadata::readClass(std::uint64_t address) const {
    const std::uint64_t data = dataOf(address);
    const std::uint64_t metaclass = pointerAt(address + offsetof(ClassLayout, metaclass));
    const std::uint64_t metaclassData = dataOf(metaclass);
    ObjcClass read = {textAt(data + offsetof(ClassData, name)),
                      classOf(address + offsetof(ClassLayout, superclass), kClassPrefix),
                      protocolNamesAt(pointerAt(data + offsetof(ClassData, protocols))),
                      variablesAt(pointerAt(data + offsetof(ClassData, variables))),
                      methodsAt(pointerAt(data + offsetof(ClassData, methods)))};
    read.start = file_.at<ClassData>(data).start;
    read.size = file_.at<ClassData>(data).size;
    read.offsets = offsetsAt(pointerAt(data + offsetof(ClassData, variables)));
    read.flags = file_.at<ClassData>(data).flags;
    read.rootMetaclass = classOf(metaclass + offsetof(ClassLayout, metaclass), kMetaclassPrefix);
    read.superMetaclass = classOf(metaclass + offsetof(ClassLayout, superclass), kMetaclassPrefix);
    read.metaclassFlags = file_.at<ClassData>(metaclassData).flags;
    read.classMethods = methodsAt(pointerAt(metaclassData + offsetof(ClassData, methods)));
    return read;
}

ObjcProtocol ObjcMetadata::readProtocol(std::uint64_t address) const {
    return {textAt(address + offsetof(ProtocolLayout, name)),
            methodsAt(pointerAt(address + offsetof(ProtocolLayout, requiredMethods))),
            methodsAt(pointerAt(address + offsetof(ProtocolLayout, optionalMethods)))};
}

// The name of the class, or of that whose metaclass it is, to which the pointer at `place` leads.
std::string ObjcMetadata::classOf(std::uint64_t place, const std::string& prefix) const {
    const MachOFile::Bind* const bind = file_.bindAt(place);
    if (bind == nullptr) {
        return textAt(dataOf(pointerAt(place)) + offsetof(ClassData, name));
    }
    if (bind->symbol.compare(0, prefix.size(), prefix) != 0) {
        throw std::runtime_error("a class is bound to " + bind->symbol);
    }
    return bind->symbol.substr(prefix.size());
}

std::vector<ObjcMethod> ObjcMetadata::methodsAt(std::uint64_t address) const {
    std::vector<ObjcMethod> methods;
    if (address == 0) {
        return methods;
    }
    const auto& head = file_.at<ListHead>(address);
    for (std::uint32_t i = 0; i < head.count; ++i) {
        const std::uint64_t method = address + sizeof(ListHead) + i * sizeof(MethodLayout);
        (void)pointerAt(method + offsetof(MethodLayout, code)); // null in a protocol
        methods.push_back({textAt(method + offsetof(MethodLayout, selector)),
                           shortened(textAt(method + offsetof(MethodLayout, types)))});
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
        const std::uint64_t variable = address + sizeof(ListHead) + i * sizeof(VariableLayout);
        variables.push_back({textAt(variable + offsetof(VariableLayout, name)),
                             shortened(textAt(variable + offsetof(VariableLayout, type)))});
    }
    return variables;
}

std::vector<std::uint32_t> ObjcMetadata::offsetsAt(std::uint64_t address) const {
    std::vector<std::uint32_t> offsets;
    if (address == 0) {
        return offsets;
    }
    const auto& head = file_.at<ListHead>(address);
    for (std::uint32_t i = 0; i < head.count; ++i) {
        const std::uint64_t variable = address + sizeof(ListHead) + i * sizeof(VariableLayout);
        offsets.push_back(
            file_.at<std::uint32_t>(pointerAt(variable + offsetof(VariableLayout, offset))));
    }
    return offsets;
}

std::vector<std::string> ObjcMetadata::protocolNamesAt(std::uint64_t address) const {
    std::vector<std::string> names;
    if (address == 0) {
        return names;
    }
    const auto count = file_.at<std::uint64_t>(address);
    for (std::uint64_t i = 1; i <= count; ++i) {
        const std::uint64_t protocol = pointerAt(address + i * sizeof(std::uint64_t));
        names.push_back(textAt(protocol + offsetof(ProtocolLayout, name)));
    }
    return names;
}
