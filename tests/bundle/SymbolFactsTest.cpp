// What the files for macOS take from it beside what is known of macOS.
#include "tests/bundle/SymbolFacts.h"
#include "tests/bundle/MacFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

constexpr int kOldestSystem = 9; // macOS 10.9

} // namespace

TEST(SymbolFacts, NameTheLibraryOfEverySymbolThatIsTaken) {
    std::set<std::string> known;
    for (const SymbolFact& fact : symbolFacts()) {
        known.insert(fact.symbol + " of " + fact.library);
    }
    std::set<std::string> taken;
    for (const MacFile& file : kMacFiles) {
        for (const MachOFile::Bind& bind : file.code().binds()) {
            taken.insert(bind.symbol + " of " + bind.library);
        }
    }
    EXPECT_THAT(taken, testing::ContainerEq(known));
}

TEST(SymbolFacts, AreAllOlderThanTheBundlesOldestSystem) {
    for (const SymbolFact& fact : symbolFacts()) {
        EXPECT_LE(fact.since, kOldestSystem) << fact.symbol;
        EXPECT_FALSE(fact.source.empty()) << fact.symbol;
    }
}
