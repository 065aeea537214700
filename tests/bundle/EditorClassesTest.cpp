// The classes of the editor in the macOS bundle, as the system's runtime will find them.
#include "tests/bundle/ExpectedClasses.h"
#include "tests/bundle/MacBundle.h"
#include "tests/bundle/ObjcMetadata.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

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
    for (const ObjcClass& each : classes) {
        names.push_back(each.name);
    }
    return names;
}

std::vector<std::string> declarationsOf(const std::vector<ObjcVariable>& variables) {
    std::vector<std::string> declarations;
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
