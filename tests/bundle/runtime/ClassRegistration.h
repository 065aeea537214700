// The Objective-C classes of mapped code, made known to GNUstep's runtime as the Mac's makes them
// known to itself: by the file's own metadata.
#pragma once

#include "tests/bundle/BundleImage.h"

#include <objc/runtime.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

// Registers them, puts the variables where they lie now into the file's offsets, and lets the
// references of the code lead to the registered classes and to this runtime's selectors. Once in a
// process for each name. Throws std::runtime_error for metadata that the Mac's runtime would trip
// over. The superclasses have to be bound to classes of this process.
class ClassRegistration {
public:
    explicit ClassRegistration(const BundleImage& image);

    // Nil when the file has none of that name.
    Class named(const std::string& name) const;
    bool has(Class known) const;
    std::vector<Class> all() const;

private:
    struct MappedClass;
    Class registered(const MappedClass* mapped);
    void setClasses(const char* section);
    void setSelectors();
    std::pair<void**, void**> slotsOf(const char* section) const; // from, to

    const BundleImage& image_;
    std::map<const void*, Class> classes_; // by the mapped class
};
