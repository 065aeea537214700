#include "tests/support/FactoryTable.h"

#include "effect/DelayProgram.h"
#include "effect/VstXSynth.h"
#include "tests/support/Bits.h"
#include "tests/support/LoadedPlugin.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <set>
#include <string>
#include <vector>

namespace {

void expectRow(const DelayProgram& program, const FactoryRow& row) {
    SCOPED_TRACE(row.name);
    EXPECT_STREQ(program.name, row.name);
    EXPECT_EQ(bitsOf(program.delayTime), bitsOf(row.delayTime));
    EXPECT_EQ(bitsOf(program.feedBack), bitsOf(row.feedBack));
    EXPECT_EQ(bitsOf(program.lowPass), bitsOf(row.lowPass));
    EXPECT_EQ(bitsOf(program.highPass), bitsOf(row.highPass));
    EXPECT_EQ(program.lowPassType, row.lowPassType);
    EXPECT_EQ(program.highPassType, row.highPassType);
    EXPECT_EQ(bitsOf(program.leftRight), bitsOf(row.leftRight));
    EXPECT_EQ(bitsOf(program.panDepth), bitsOf(row.panDepth));
    EXPECT_EQ(bitsOf(program.mix), bitsOf(row.mix));
}

} // namespace

TEST(FactoryPrograms, RecordFieldsStandInOrder) {
    EXPECT_EQ(offsetof(DelayProgram, delayTime), 0u);
    EXPECT_EQ(offsetof(DelayProgram, feedBack), 4u);
    EXPECT_EQ(offsetof(DelayProgram, lowPass), 8u);
    EXPECT_EQ(offsetof(DelayProgram, highPass), 16u);
    EXPECT_EQ(offsetof(DelayProgram, highPassType), 24u);
    EXPECT_EQ(offsetof(DelayProgram, lowPassType), 25u);
    EXPECT_EQ(offsetof(DelayProgram, leftRight), 32u);
    EXPECT_EQ(offsetof(DelayProgram, panDepth), 40u);
    EXPECT_EQ(offsetof(DelayProgram, mix), 48u);
    EXPECT_EQ(offsetof(DelayProgram, name), 56u);
    EXPECT_EQ(sizeof(DelayProgram), 56u + 256u);
}

TEST(FactoryPrograms, DefaultRecord) {
    const DelayProgram program;
    EXPECT_EQ(bitsOf(program.delayTime), 0x3DA3CB27u);
    EXPECT_EQ(bitsOf(program.feedBack), 0x3E5C28F6u);
    EXPECT_EQ(program.lowPass, 0.374);
    EXPECT_EQ(program.highPass, 0.655999);
    EXPECT_FALSE(program.highPassType);
    EXPECT_TRUE(program.lowPassType);
    EXPECT_EQ(program.leftRight, 0.5);
    EXPECT_EQ(bitsOf(program.panDepth), 0u);
    EXPECT_EQ(program.mix, 1.0);
    EXPECT_STREQ(program.name, "Init");
}

TEST(FactoryPrograms, EveryFieldOfEveryProgram) {
    DelayProgram programs[26];
    for (DelayProgram& program : programs) { // nothing of what stood there may stay
        program.delayTime = program.feedBack = 9.0f;
        program.lowPass = program.highPass = 9.0;
        program.leftRight = program.panDepth = program.mix = 9.0;
        std::strcpy(program.name, "a name that is longer than any");
    }
    for (int filled = 0; filled < 2; ++filled) {
        for (DelayProgram& program : programs) {
            program.lowPassType = program.highPassType = filled == 1;
        }
        fillFactoryPrograms(programs);
        for (int i = 0; i < 26; ++i) {
            expectRow(programs[i], kFactoryTable[i]);
        }
    }
}

TEST(FactoryPrograms, InstanceBeginsWithThemAndProgramZeroApplied) {
    const VstXSynth effect(plainHost);
    for (int i = 1; i < 26; ++i) {
        expectRow(effect.programs[i], kFactoryTable[i]);
    }
    const DelayProgram& applied = effect.programs[0];
    EXPECT_STREQ(applied.name, "SlapBack");
    EXPECT_EQ(bitsOf(applied.delayTime), 0x3DA3CB27u);
    EXPECT_EQ(applied.lowPass, 0.37400001287460327) << "rounded to single precision by its load";
    EXPECT_EQ(applied.highPass, static_cast<double>(0.655999f));
}

TEST(FactoryPrograms, NoProgramIsCalledInit) {
    VstXSynth effect(plainHost);
    std::set<std::string> names;
    for (VstInt32 i = 0; i < 26; ++i) {
        char name[25];
        ASSERT_TRUE(effect.getProgramNameIndexed(0, i, name));
        names.insert(name);
    }
    EXPECT_EQ(names.size(), 26u);
    EXPECT_EQ(names.count("Init"), 0u);
}

TEST(FactoryPrograms, LengthsAtTheDefaultRate) {
    VstXSynth effect(plainHost);
    for (VstInt32 i = 0; i < 26; ++i) {
        effect.setProgram(i);
        EXPECT_EQ(effect.delayLength, kFactoryTable[i].lengthAt44100) << kFactoryTable[i].name;
    }
}

TEST(FactoryPrograms, LoadRoundsTheRecordsToSinglePrecision) {
    VstXSynth effect(plainHost);
    for (VstInt32 i = 0; i < 26; ++i) {
        effect.setProgram(i);
        const DelayProgram& program = effect.programs[i];
        const FactoryRow& row = kFactoryTable[i];
        SCOPED_TRACE(row.name);
        EXPECT_EQ(program.delayTime, row.delayTime);
        EXPECT_EQ(program.feedBack, row.feedBack);
        EXPECT_EQ(program.lowPass, static_cast<double>(static_cast<float>(row.lowPass)));
        EXPECT_EQ(program.highPass, static_cast<double>(static_cast<float>(row.highPass)));
        EXPECT_EQ(program.leftRight, static_cast<double>(static_cast<float>(row.leftRight)));
        EXPECT_EQ(program.panDepth, static_cast<double>(static_cast<float>(row.panDepth)));
        EXPECT_EQ(program.mix, static_cast<double>(static_cast<float>(row.mix)));
        EXPECT_EQ(program.highPassType, row.highPassType);
        EXPECT_EQ(program.lowPassType, row.highPass != 0.0) << "the high-pass decides";
        EXPECT_STREQ(program.name, row.name);
    }
}

TEST(FactoryPrograms, ThreeProgramsLoadWithAnotherLowPassPlaceThanTheyStore) {
    std::vector<int> differing;
    VstXSynth effect(plainHost);
    for (VstInt32 i = 0; i < 26; ++i) {
        const bool stored = effect.programs[i].lowPassType;
        effect.setProgram(i);
        if (effect.lowPassType != (i == 0 ? true : stored)) {
            differing.push_back(i);
        }
    }
    EXPECT_EQ(differing, (std::vector<int>{9, 10, 13}));
}
