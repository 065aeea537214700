#include "effect/VstXSynth.h"

#include "tests/effect/EffectState.h"
#include "tests/support/LoadedPlugin.h"
#include "tests/support/ReferenceDelay.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr VstInt32 kLowest = std::numeric_limits<VstInt32>::min();
constexpr VstInt32 kHighest = std::numeric_limits<VstInt32>::max();

class Programs : public testing::Test {
protected:
    void fillLines(float value) {
        std::fill_n(effect.delayBufferLeft, VstXSynth::kDelayCapacity, value);
        std::fill_n(effect.delayBufferRight, VstXSynth::kDelayCapacity, value);
    }
    bool linesAreSilent() {
        const auto isZero = [](float sample) { return sample == 0.0f; };
        const auto size = VstXSynth::kDelayCapacity;
        return std::all_of(effect.delayBufferLeft, effect.delayBufferLeft + size, isZero) &&
               std::all_of(effect.delayBufferRight, effect.delayBufferRight + size, isZero);
    }
    // All bytes of a field of 40 after the current name was asked for.
    std::string nameField() {
        std::string bytes(40, '#');
        effect.getProgramName(bytes.data());
        return bytes;
    }

    VstXSynth effect{plainHost};
};

std::string named(const std::string& name) {
    std::string bytes = name;
    bytes.resize(25, '\0');
    return bytes + std::string(15, '#');
}

} // namespace

TEST_F(Programs, NumbersOutsideTheBankChangeNothing) {
    fillLines(0.5f);
    effect.delayPosition = 5;
    for (const VstInt32 program : {26, 27, -1, -26, kLowest, kHighest}) {
        effect.setProgram(program);
        EXPECT_EQ(effect.getProgram(), 0);
        EXPECT_EQ(effect.delayPosition, 5);
        EXPECT_FALSE(linesAreSilent());
    }
    fillLines(0.0f);
    effect.delayPosition = 0;
    EXPECT_EQ(stateDifference(effect, ReferenceDelay()), "");
}

TEST_F(Programs, EveryLoadDoesWhatTheModelDoes) {
    ReferenceDelay model;
    for (int round = 0; round < 2; ++round) {
        for (VstInt32 program = 25; program >= 0; --program) {
            effect.setProgram(program);
            model.setProgram(program);
            ASSERT_EQ(effect.getProgram(), program);
            ASSERT_EQ(stateDifference(effect, model), "") << program;
        }
    }
}

TEST_F(Programs, ReloadClearsTheLinesAllTheSame) {
    fillLines(0.5f);
    effect.delayPosition = 17;
    effect.panSide = true;
    effect.sweepPhase = 0.5;
    effect.sineIndex = 3;
    effect.lowPassLeft->highStages[1] = 0.75;
    effect.setProgram(0);
    EXPECT_TRUE(linesAreSilent());
    EXPECT_EQ(effect.delayPosition, 0);
    EXPECT_TRUE(effect.panSide);
    EXPECT_EQ(effect.sweepPhase, 0.5);
    EXPECT_EQ(effect.sineIndex, 3);
    EXPECT_EQ(effect.lowPassLeft->highStages[1], 0.75);
}

TEST_F(Programs, LoadWritesAllParametersInOrderThroughTheVirtualOperation) {
    struct Watching : VstXSynth {
        Watching() : VstXSynth(plainHost) {}
        void setParameter(VstInt32 index, float value) override {
            writes.emplace_back(index, value);
            programAtWrite.push_back(getProgram());
            VstXSynth::setParameter(index, value);
        }
        std::vector<std::pair<VstInt32, float>> writes;
        std::vector<VstInt32> programAtWrite;
    };
    Watching watching;
    watching.setProgram(9);
    EXPECT_EQ(watching.writes, (std::vector<std::pair<VstInt32, float>>{
                                   {0, 0.1349886f},
                                   {1, 0.5f},
                                   {2, 0.239999f},
                                   {3, 0.474999f},
                                   {4, 1.0f}, // stored as off, and switched on by the write before
                                   {5, 1.0f},
                                   {6, 0.5f},
                                   {7, 0.0f},
                                   {8, 0.5f}}));
    EXPECT_EQ(watching.programAtWrite, std::vector<VstInt32>(9, 9));
}

TEST_F(Programs, SwitchesAfterLoading) {
    const std::pair<VstInt32, std::pair<float, float>> rows[] = {
        {9, {1.0f, 1.0f}},  {10, {1.0f, 0.0f}}, {13, {1.0f, 0.0f}}, {7, {0.0f, 1.0f}},
        {11, {0.0f, 0.0f}}, {20, {0.0f, 1.0f}}, {25, {0.0f, 0.0f}}, {3, {1.0f, 1.0f}}};
    for (const auto& [program, types] : rows) {
        effect.setProgram(program);
        EXPECT_EQ(effect.getParameter(kLowPassType), types.first) << program;
        EXPECT_EQ(effect.getParameter(kHighPassType), types.second) << program;
        EXPECT_EQ(effect.programs[program].lowPassType, types.first != 0.0f) << program;
    }
}

TEST_F(Programs, ProgramTwelveRunsNoLowPass) {
    effect.setProgram(12);
    EXPECT_EQ(effect.lowPass, 0.0);
    std::vector<float> samples(4096, 0.5f);
    float* channels[2] = {samples.data(), samples.data()};
    effect.processReplacing(channels, channels, 4096);
    for (const double stage : effect.lowPassLeft->lowStages) {
        EXPECT_EQ(stage, 0.0) << "a pair that is off doesn't tick";
    }
    EXPECT_NE(effect.highPassLeft->lowStages[0], 0.0);
}

TEST_F(Programs, EditsStayWithTheirProgram) {
    effect.setProgram(3);
    effect.setParameter(kMix, 0.25f);
    effect.setProgram(4);
    EXPECT_EQ(effect.getParameter(kMix), 1.0f);
    effect.setProgram(3);
    EXPECT_EQ(effect.getParameter(kMix), 0.25f);
}

TEST_F(Programs, EditedSwitchGivesWayToTheHighPassAtTheNextLoad) {
    effect.setProgram(3);
    effect.setParameter(kLowPassType, 0.0f);
    EXPECT_FALSE(effect.programs[3].lowPassType);
    effect.setProgram(4);
    effect.setProgram(3);
    EXPECT_EQ(effect.getParameter(kLowPassType), 1.0f);
}

TEST_F(Programs, BanksOfTwoInstancesAreApart) {
    VstXSynth other(plainHost);
    effect.setParameter(kMix, 0.25f);
    effect.setProgram(5);
    char name[] = "Mine";
    effect.setProgramName(name);
    EXPECT_EQ(stateDifference(other, ReferenceDelay()), "");
    EXPECT_STREQ(other.programs[5].name, "Canyon");
    EXPECT_EQ(other.getProgram(), 0);
}

TEST_F(Programs, NameIsZeroFilledToItsLimit) {
    EXPECT_EQ(nameField(), named("SlapBack"));
    effect.setProgram(2);
    EXPECT_EQ(nameField(), named("Country SlapBack"));
}

TEST_F(Programs, NameIsCutAtTwentyFourCharacters) {
    char name[] = "abcdefghijklmnopqrstuvwxyz0123";
    effect.setProgramName(name);
    EXPECT_EQ(nameField(), named("abcdefghijklmnopqrstuvwx"));
    EXPECT_STREQ(effect.programs[0].name, "abcdefghijklmnopqrstuvwx");
    char exact[] = "abcdefghijklmnopqrstuvwx";
    effect.setProgramName(exact);
    EXPECT_EQ(nameField(), named("abcdefghijklmnopqrstuvwx"));
    char empty[] = "";
    effect.setProgramName(empty);
    EXPECT_EQ(nameField(), named(""));
}

TEST_F(Programs, NameReachesTheCurrentRecordAlone) {
    effect.setProgram(7);
    char name[] = "Cloud";
    effect.setProgramName(name);
    EXPECT_STREQ(effect.programs[7].name, "Cloud");
    EXPECT_STREQ(effect.programs[6].name, "RattleSnake");
    EXPECT_STREQ(effect.programs[8].name, "Small Echo");
    effect.setProgram(8);
    EXPECT_EQ(nameField(), named("Small Echo"));
    effect.setProgram(7);
    EXPECT_EQ(nameField(), named("Cloud"));
}

TEST_F(Programs, NamingChangesNothingButTheName) {
    ReferenceDelay model;
    char name[] = "Other";
    effect.setProgramName(name);
    model.programs[0].name = "Other";
    EXPECT_EQ(stateDifference(effect, model), "");
}

TEST_F(Programs, TextBehindTheTwentyFourthCharacterIsNeverTouched) {
    std::memset(effect.programs[0].name + 25, 'z', 231);
    char name[] = "abcdefghijklmnopqrstuvwxyz0123";
    effect.setProgramName(name);
    EXPECT_EQ(std::string(effect.programs[0].name + 25, 231), std::string(231, 'z'));
}

TEST_F(Programs, IndexedNameComesFromTheNamedRecord) {
    effect.setProgram(4);
    for (const VstInt32 category : {0, -1, 5, kHighest}) {
        std::string bytes(40, '#');
        EXPECT_TRUE(effect.getProgramNameIndexed(category, 25, bytes.data()));
        EXPECT_EQ(bytes, named("Punk"));
        EXPECT_TRUE(effect.getProgramNameIndexed(category, 0, bytes.data()));
        EXPECT_EQ(bytes, named("SlapBack"));
    }
}

TEST_F(Programs, IndexedNameBeyondTheBankIsRefused) {
    for (const VstInt32 index : {26, 27, kHighest}) {
        std::string bytes(40, '#');
        EXPECT_FALSE(effect.getProgramNameIndexed(0, index, bytes.data()));
        EXPECT_EQ(bytes, std::string(40, '#'));
    }
}

TEST_F(Programs, NegativeIndexIsTheHostsAffair) {
    DelayProgram* const bank = effect.programs;
    effect.programs = bank + 3; // so that there is something in front
    char name[40];
    EXPECT_TRUE(effect.getProgramNameIndexed(0, -1, name));
    EXPECT_STREQ(name, "Country SlapBack");
    EXPECT_TRUE(effect.getProgramNameIndexed(0, -3, name));
    EXPECT_STREQ(name, "SlapBack");
    effect.programs = bank;
}

TEST_F(Programs, NewRecordWritesNoMoreOfItsNameThanIsUsed) {
    alignas(DelayProgram) unsigned char memory[sizeof(DelayProgram)];
    std::memset(memory, 'z', sizeof(memory));
    const auto* const program = new (memory) DelayProgram;
    EXPECT_STREQ(program->name, "Init");
    const auto* const unused = memory + offsetof(DelayProgram, name) + 25;
    EXPECT_EQ(std::string(unused, unused + 231), std::string(231, 'z'));
}

TEST_F(Programs, FactoryNamesWriteNoMoreThanIsUsed) {
    std::vector<DelayProgram> bank(kNumPrograms);
    for (DelayProgram& program : bank) {
        std::memset(program.name, 'z', sizeof(program.name));
    }
    fillFactoryPrograms(bank.data());
    for (const DelayProgram& program : bank) {
        EXPECT_EQ(std::string(program.name + 25, 231), std::string(231, 'z')) << program.name;
    }
}

TEST_F(Programs, ChunksAreNotUsed) {
    EXPECT_EQ(effect.getAeffect()->flags & effFlagsProgramChunks, 0);
    void* data = nullptr;
    EXPECT_EQ(effect.dispatcher(effGetChunk, 0, 0, &data, 0.0f), 0);
    EXPECT_EQ(data, nullptr);
    EXPECT_EQ(effect.dispatcher(effSetChunk, 0, 0, data, 0.0f), 0);
}
