// The Mach-O files that are built for macOS, for tests that hold for each.
#pragma once

#include "tests/bundle/MacBundle.h"

#include <gtest/gtest.h>

#include <string>

struct MacFile {
    std::string name;
    const MachOFile& (*code)();
};

inline void PrintTo(const MacFile& file, std::ostream* out) {
    *out << file.name;
}

class MacFileTest : public testing::TestWithParam<MacFile> {
protected:
    static const MachOFile& code() { return GetParam().code(); }

    // Throws std::runtime_error when there is none.
    static const MachOFile::Section& section(const std::string& segment, const std::string& name) {
        const MachOFile::Section* const found = code().section(segment, name);
        if (found == nullptr) {
            throw std::runtime_error("the file has no section " + name);
        }
        return *found;
    }
};

inline const MacFile kMacFiles[] = {{"Bundle", macBundleCode}, {"Check", macCheckCode}};

inline std::string nameOf(const testing::TestParamInfo<MacFile>& file) {
    return file.param.name;
}
