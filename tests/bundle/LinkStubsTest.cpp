// The link stubs of the cross-build beside what the bundle takes from the libraries that they stand
// for.
#include "tests/bundle/LinkStub.h"
#include "tests/bundle/LinuxLibraries.h"
#include "tests/bundle/MacFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace {

const std::string kStubs = std::string(TVDELAY_SOURCE_FOLDER) + "/platform/macos/sdk";
const char* const kSystem = "/usr/lib/libSystem.B.dylib";
const char* const kCxx = "/usr/lib/libc++.1.dylib";

using SymbolsByLibrary = std::map<std::string, std::set<std::string>>;

SymbolsByLibrary offered() {
    SymbolsByLibrary symbols;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(kStubs)) {
        if (entry.path().extension() == ".tbd") {
            const LinkStub stub = readLinkStub(entry.path());
            symbols[stub.installName] = stub.symbols;
        }
    }
    return symbols;
}

SymbolsByLibrary taken() {
    SymbolsByLibrary symbols;
    for (const MacFile& file : kMacFiles) {
        for (const MachOFile::Library& library : file.code().libraries()) {
            symbols[library.path];
        }
        for (const MachOFile::Bind& bind : file.code().binds()) {
            symbols[bind.library].insert(bind.symbol);
        }
    }
    return symbols;
}

// A class comes with its metaclass, whether or not both are taken.
SymbolsByLibrary withoutMetaclasses(SymbolsByLibrary symbols) {
    const std::string metaclass = "_OBJC_METACLASS_$_";
    for (auto& [library, names] : symbols) {
        for (auto name = names.begin(); name != names.end();) {
            const bool drop = name->compare(0, metaclass.size(), metaclass) == 0;
            name = drop ? names.erase(name) : std::next(name);
        }
    }
    return symbols;
}

} // namespace

TEST(LinkStubs, ListWhatIsTakenAndNothingElse) {
    EXPECT_EQ(withoutMetaclasses(offered()), withoutMetaclasses(taken()));
}

TEST(LinkStubs, SpellTheSystemsNamesAsTheSystemDoes) {
    const LinkStub system = readLinkStub(TVDELAY_MACOS_SDK "/libSystem.macos11.tbd");
    EXPECT_EQ(system.installName, kSystem);
    const std::set<std::string> names = offered().at(kSystem);
    ASSERT_FALSE(names.empty());
    for (const std::string& name : names) {
        EXPECT_EQ(system.symbols.count(name), 1u) << name;
    }
}

TEST(LinkStubs, SpellTheCxxLibrarysNamesAsItsSourcesDo) {
    const std::set<std::string> names = offered().at(kCxx);
    ASSERT_FALSE(names.empty());
    for (const std::string& name : names) {
        EXPECT_NE(inCxxLibrary(name), nullptr) << name;
    }
}
