// The classes of the editor in the macOS bundle, as the system's runtime will find them.
#include "tests/bundle/AppKitSelectors.h"
#include "tests/bundle/ExpectedClasses.h"
#include "tests/bundle/MacBundle.h"
#include "tests/bundle/ObjcMetadata.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <set>
#include <string>

// For gtest's reports, which look for it beside the type.
void PrintTo(const ObjcClass& row, std::ostream* out) {
    *out << row.name;
}

namespace {

const ObjcMetadata& metadata() {
    static const ObjcMetadata bundle(macBundleCode());
    return bundle;
}

const ObjcClass& classNamed(const std::string& name) {
    const auto& classes = metadata().classes();
    const auto found = std::find_if(classes.begin(), classes.end(),
                                    [&](const ObjcClass& each) { return each.name == name; });
    if (found == classes.end()) {
        throw std::runtime_error("the bundle has no class " + name);
    }
    return *found;
}

std::vector<std::string> namesOf(const std::vector<ObjcClass>& classes) {
    std::vector<std::string> names;
    names.reserve(classes.size());
    for (const ObjcClass& each : classes) {
        names.push_back(each.name);
    }
    return names;
}

std::vector<std::string> declarationsOf(const std::vector<ObjcVariable>& variables) {
    std::vector<std::string> declarations;
    declarations.reserve(variables.size());
    for (const ObjcVariable& each : variables) {
        declarations.push_back(each.name + " " + each.type);
    }
    return declarations;
}

class EditorClass : public testing::TestWithParam<ObjcClass> {};

} // namespace

TEST(EditorClasses, AreAllThereAndNoOthers) {
    EXPECT_THAT(namesOf(metadata().classes()),
                testing::UnorderedElementsAreArray(namesOf(expectedClasses())));
}

TEST_P(EditorClass, HasItsSuperclass) {
    EXPECT_EQ(classNamed(GetParam().name).superclass, GetParam().superclass);
}

TEST_P(EditorClass, NamesItsProtocols) {
    EXPECT_EQ(classNamed(GetParam().name).protocols, GetParam().protocols);
}

TEST_P(EditorClass, HasItsVariablesInOrder) {
    EXPECT_EQ(declarationsOf(classNamed(GetParam().name).variables),
              declarationsOf(GetParam().variables));
}

TEST_P(EditorClass, AnswersItsSelectors) {
    for (const ObjcMethod& expected : GetParam().methods) {
        const ObjcMethod* const method = classNamed(GetParam().name).method(expected.selector);
        ASSERT_NE(method, nullptr) << expected.selector;
        EXPECT_EQ(method->types, expected.types) << expected.selector;
    }
}

// One more could stand in the way of a superclass that has it on some system.
TEST_P(EditorClass, AnswersNoSelectorsButItsOwnAndItsHelpers) {
    for (const ObjcMethod& method : classNamed(GetParam().name).methods) {
        const bool expected = GetParam().method(method.selector) != nullptr ||
                              helperSelectors().count(method.selector) != 0;
        EXPECT_TRUE(expected) << method.selector;
    }
    EXPECT_TRUE(classNamed(GetParam().name).classMethods.empty());
}

// The runtime moves the variables when the superclass has grown, by how far it reaches beyond the
// start.
TEST_P(EditorClass, StartsAtItsFirstVariableAndEndsBehindItsLast) {
    const ObjcClass& row = classNamed(GetParam().name);
    ASSERT_EQ(row.offsets.size(), row.variables.size());
    EXPECT_GE(row.start, sizeof(void*));
    EXPECT_EQ(row.start, row.offsets.empty() ? row.size : row.offsets.front());
    EXPECT_TRUE(std::is_sorted(row.offsets.begin(), row.offsets.end()));
    EXPECT_GT(row.size, row.offsets.empty() ? 0 : row.offsets.back());
    for (const ObjcClass& other : metadata().classes()) {
        if (other.name == row.superclass) {
            EXPECT_GE(row.start, other.size);
        }
    }
}

TEST_P(EditorClass, HasTheMetaclassOfItsSuperclassAboveItsOwn) {
    const ObjcClass& row = classNamed(GetParam().name);
    constexpr std::uint32_t kMetaclass = 1;
    constexpr std::uint32_t kHidden = 16;
    EXPECT_EQ(row.flags, kHidden);
    EXPECT_EQ(row.metaclassFlags, kHidden | kMetaclass);
    EXPECT_EQ(row.rootMetaclass, "NSObject");
    EXPECT_EQ(row.superMetaclass, row.superclass);
}

INSTANTIATE_TEST_SUITE_P(Bundle, EditorClass, testing::ValuesIn(expectedClasses()),
                         [](const auto& row) { return row.param.name; });

TEST(EditorClasses, LeaveOutTheSettersThatAreNotMeantToBe) {
    EXPECT_EQ(classNamed("TarnsUiView13").method("setPanningSliderVal:"), nullptr);
    EXPECT_EQ(classNamed("DetatchedView13").method("setOwner:"), nullptr);
    EXPECT_EQ(classNamed("tarnsCustomWindow10").method("setWinPointerRef:"), nullptr);
    EXPECT_EQ(classNamed("lWindowView9").method("setCurrentSamples:"), nullptr);
}

TEST(EditorClasses, LeaveTheMessagesOfTheUnusedButtonsUnanswered) {
    for (const ObjcClass& each : metadata().classes()) {
        for (const char* const selector :
             {"updateCenterOffsetAmountAndDisplay:", "updateGroupButtons:", "addSplash:",
              "removeSplash:", "setAU:"}) {
            EXPECT_EQ(each.method(selector), nullptr) << each.name << " " << selector;
        }
    }
}

// They would change AppKit for the host and all its plug-ins, or run before anybody asks.
TEST(EditorClasses, AddNothingToOtherClassesAndDoNothingWhenLoaded) {
    for (const MachOFile::Section& section : macBundleCode().sections()) {
        EXPECT_THAT(section.name, testing::Not(testing::StartsWith("__objc_cat")));
        EXPECT_THAT(section.name, testing::Not(testing::StartsWith("__objc_nlc")));
    }
}

TEST(EditorClasses, AreOfTheKindThatTheRuntimeTakes) {
    const MachOFile::Section* const info = macBundleCode().section("__DATA", "__objc_imageinfo");
    ASSERT_NE(info, nullptr);
    ASSERT_EQ(info->size, 8u);
    constexpr std::uint32_t kClassProperties = 0x40; // no garbage collection, no Swift
    EXPECT_EQ(macBundleCode().at<std::uint32_t>(info->address), 0u);
    EXPECT_EQ(macBundleCode().at<std::uint32_t>(info->address + 4), kClassProperties);
}

TEST(EditorClasses, SendOnlyWhatTheyOrMacOs109Answer) {
    std::set<std::string> answered(outsideSelectors().begin(), outsideSelectors().end());
    for (const ObjcClass& each : metadata().classes()) {
        for (const ObjcMethod& method : each.methods) {
            answered.insert(method.selector);
        }
    }
    for (const AppKitSelector& each : appKitSelectors()) {
        answered.insert(each.selector);
    }
    ASSERT_GT(metadata().sentSelectors().size(), 100u);
    for (const std::string& selector : metadata().sentSelectors()) {
        EXPECT_EQ(answered.count(selector), 1u) << selector;
    }
}

TEST(EditorClasses, SendNothingNewerThanMacOs109WithoutAsking) {
    for (const AppKitSelector& each : appKitSelectors()) {
        EXPECT_TRUE(each.since <= 9 || each.guarded) << each.selector;
    }
}

TEST(EditorClasses, ShareOneProtocolBetweenControlsAndRouter) {
    const auto& protocols = metadata().protocols();
    const auto found =
        std::find_if(protocols.begin(), protocols.end(),
                     [](const ObjcProtocol& each) { return each.name == "FlatKnobProtocol"; });
    ASSERT_NE(found, protocols.end());
    ASSERT_EQ(found->required.size(), 1u);
    EXPECT_EQ(found->required[0].selector, "knobUpdatedWithIndex:withValue:withObject:");
    EXPECT_EQ(found->required[0].types, "v@:i@@");
    EXPECT_EQ(found->optional.size(), 0u);
}
