#include "tests/bundle/runtime/ClassRegistration.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace {

struct Variable {
    std::uint64_t* offset;
    const char* name;
    const char* type;
    std::uint32_t alignment; // power of two
    std::uint32_t size;
};

struct Method {
    const char* selector;
    const char* types;
    void* code;
};

template <typename Entry>
struct List {
    std::uint32_t entrySize;
    std::uint32_t count;

    const Entry* begin() const { return reinterpret_cast<const Entry*>(this + 1); }
    const Entry* end() const { return begin() + count; }
};

struct ClassData {
    std::uint32_t flags;
    std::uint32_t start;
    std::uint32_t size;
    std::uint32_t reserved;
    const void* strongLayout;
    const char* name;
    const List<Method>* methods;
    const void* protocols;
    const List<Variable>* variables;
    const void* weakLayout;
    const void* properties;
};

template <typename Entry>
void requireEntries(const List<Entry>* list, const char* owner) {
    if (list != nullptr && list->entrySize != sizeof(Entry)) {
        throw std::runtime_error(std::string("a list of ") + owner +
                                 " has entries of another size");
    }
}

void addVariables(Class made, const ClassData& data) {
    requireEntries(data.variables, data.name);
    if (data.variables == nullptr) {
        return;
    }
    for (const Variable& each : *data.variables) {
        if (!class_addIvar(made, each.name, each.size, static_cast<std::uint8_t>(each.alignment),
                           each.type)) {
            throw std::runtime_error(std::string(data.name) + " can't have " + each.name);
        }
    }
}

void addMethods(Class made, const ClassData& data) {
    requireEntries(data.methods, data.name);
    if (data.methods == nullptr) {
        return;
    }
    for (const Method& each : *data.methods) {
        class_addMethod(made, sel_registerName(each.selector), reinterpret_cast<IMP>(each.code),
                        each.types);
    }
}

// By as much as the superclass reaches beyond the start, which the Mac's runtime adds to all.
void moveVariables(Class made, const ClassData& data) {
    if (data.variables == nullptr) {
        return;
    }
    std::int64_t movedBy = 0;
    bool first = true;
    for (const Variable& each : *data.variables) {
        const std::int64_t now = ivar_getOffset(class_getInstanceVariable(made, each.name));
        const auto before = static_cast<std::int64_t>(*each.offset);
        if (first && before != data.start) {
            throw std::runtime_error(std::string(data.name) + " doesn't start at its variables");
        }
        movedBy = first ? now - before : movedBy;
        if (now - before != movedBy) {
            throw std::runtime_error(std::string(data.name) + " is laid out in another way");
        }
        first = false;
        *each.offset = static_cast<std::uint64_t>(now);
    }
}

} // namespace

struct ClassRegistration::MappedClass {
    const MappedClass* metaclass;
    const void* superclass;
    const void* cache;
    const void* virtualTable;
    std::uintptr_t data;

    const ClassData& content() const {
        return *reinterpret_cast<const ClassData*>(data & ~std::uintptr_t{7});
    }
};

ClassRegistration::ClassRegistration(const BundleImage& image) : image_(image) {
    const auto [from, to] = slotsOf("__objc_classlist");
    std::for_each(from, to, [&](void* mapped) {
        if (!image.holds(mapped)) {
            throw std::runtime_error("the list of classes leads out of the file");
        }
        registered(static_cast<const MappedClass*>(mapped));
    });
    setClasses("__objc_classrefs");
    setClasses("__objc_superrefs");
    setSelectors();
}

Class ClassRegistration::registered(const MappedClass* mapped) {
    const auto known = classes_.find(mapped);
    if (known != classes_.end()) {
        return known->second;
    }
    const ClassData& data = mapped->content();
    const Class above = image_.holds(mapped->superclass)
                            ? registered(static_cast<const MappedClass*>(mapped->superclass))
                            : static_cast<Class>(const_cast<void*>(mapped->superclass));
    const Class made = objc_allocateClassPair(above, data.name, 0);
    if (made == Nil) {
        throw std::runtime_error(std::string(data.name) + " is there already");
    }
    if (mapped->metaclass->content().methods != nullptr) {
        throw std::runtime_error(std::string(data.name) + " has methods of the class");
    }
    addVariables(made, data);
    addMethods(made, data);
    objc_registerClassPair(made);
    moveVariables(made, data);
    classes_[mapped] = made;
    return made;
}

std::pair<void**, void**> ClassRegistration::slotsOf(const char* section) const {
    const MachOFile::Section* const found = image_.file().section("__DATA", section);
    if (found == nullptr) {
        return {nullptr, nullptr};
    }
    auto* const slots = static_cast<void**>(image_.addressOf(found->address));
    return {slots, slots + found->size / sizeof(void*)};
}

void ClassRegistration::setClasses(const char* section) {
    const auto [from, to] = slotsOf(section);
    std::for_each(from, to, [&](void*& slot) {
        slot = image_.holds(slot) ? static_cast<void*>(classes_.at(slot)) : slot;
    });
}

void ClassRegistration::setSelectors() {
    const auto [from, to] = slotsOf("__objc_selrefs");
    std::for_each(from, to, [](void*& slot) {
        slot = const_cast<void*>(
            static_cast<const void*>(sel_registerName(static_cast<const char*>(slot))));
    });
}

Class ClassRegistration::named(const std::string& name) const {
    for (const auto& [mapped, known] : classes_) {
        if (name == class_getName(known)) {
            return known;
        }
    }
    return Nil;
}

std::vector<Class> ClassRegistration::all() const {
    std::vector<Class> known;
    known.reserve(classes_.size());
    for (const auto& [mapped, each] : classes_) {
        known.push_back(each);
    }
    return known;
}

bool ClassRegistration::has(Class known) const {
    for (const auto& [mapped, each] : classes_) {
        if (each == known) {
            return true;
        }
    }
    return false;
}
