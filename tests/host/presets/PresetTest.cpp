#include "host/presets/Preset.h"

#include "host/presets/EffectState.h"
#include "host/presets/PresetFile.h"
#include "tests/host/TestPlugin.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace tvhost;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

using namespace std::string_literals;

// Files byte by byte, as other hosts write them: 0.5 is 3f000000, 0.25 is 3e800000.
const std::string kName = "Warm\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"s;
const std::string kProgramOfTwo = "CcnK\0\0\0\x38"
                                  "FxCk\0\0\0\1"
                                  "Tst1\0\0\0\7\0\0\0\2"s +
                                  kName + "\x3f\0\0\0\x3e\x80\0\0"s;
const std::string kProgramChunk = "CcnK\0\0\0\x38"
                                  "FPCh\0\0\0\1"
                                  "Chnk\0\0\0\0\0\0\0\1"s +
                                  kName + "\0\0\0\4abc\xff"s;
const std::string kBankChunk = "CcnK\0\0\0\x9b"
                               "FBCh\0\0\0\1"
                               "Chnk\0\0\0\0\0\0\0\3"s +
                               std::string(128, '\0') + "\0\0\0\3xyz"s;

std::string bank(char format, char selected) {
    return "CcnK\0\0\x01\x14"
           "FxBk\0\0\0"s +
           format + "Tst1\0\0\0\7\0\0\0\2\0\0\0"s + selected + std::string(124, '\0') +
           kProgramOfTwo + kProgramOfTwo;
}

std::string refusal(const std::string& bytes) {
    try {
        presetFromBytes(bytes);
    } catch (const UserError& error) {
        return error.what();
    }
    return "no refusal";
}

std::string refusalBy(const char* plugin, const Preset& preset) {
    EffectInstance effect(loadTestPlugin(plugin));
    try {
        loadPreset(effect, preset, "the.fxp");
    } catch (const UserError& error) {
        return error.what();
    }
    return "no refusal";
}

std::vector<float> valuesOf(const PresetProgram& program) {
    return std::get<std::vector<float>>(program.state);
}

} // namespace

TEST(Preset, ReadsAProgramOfParameters) {
    const Preset preset = presetFromBytes(kProgramOfTwo);
    EXPECT_EQ(preset.kind, Preset::Kind::kProgram);
    EXPECT_EQ(preset.uniqueId, 0x54737431);
    EXPECT_EQ(preset.effectVersion, 7);
    ASSERT_EQ(preset.programs.size(), 1u);
    EXPECT_EQ(preset.programs[0].name, "Warm");
    EXPECT_THAT(valuesOf(preset.programs[0]), ElementsAre(0.5f, 0.25f));
}

TEST(Preset, ReadsChunks) {
    const Preset program = presetFromBytes(kProgramChunk);
    EXPECT_EQ(program.kind, Preset::Kind::kProgram);
    EXPECT_EQ(std::get<std::string>(program.programs.at(0).state), "abc\xff");
    const Preset bank = presetFromBytes(kBankChunk);
    EXPECT_EQ(bank.kind, Preset::Kind::kBank);
    EXPECT_EQ(bank.bankChunk, "xyz");
    EXPECT_EQ(bank.bankChunkPrograms, 3);
    EXPECT_FALSE(bank.currentProgram.has_value());
}

TEST(Preset, ReadsBanksOfBothFormats) {
    const Preset older = presetFromBytes(bank(1, 1));
    ASSERT_EQ(older.programs.size(), 2u);
    EXPECT_FALSE(older.currentProgram.has_value());
    const Preset newer = presetFromBytes(bank(2, 1));
    EXPECT_EQ(newer.currentProgram, 1);
    EXPECT_THAT(valuesOf(newer.programs.at(1)), ElementsAre(0.5f, 0.25f));
}

TEST(Preset, WritesTheBytesThatItRead) {
    for (const std::string& bytes : {kProgramOfTwo, kProgramChunk, bank(2, 1)}) {
        EXPECT_EQ(bytesOf(presetFromBytes(bytes)), bytes);
    }
    Preset chunk = presetFromBytes(kBankChunk);
    EXPECT_EQ(bytesOf(chunk), "CcnK\0\0\0\x9b"
                              "FBCh\0\0\0\2"s +
                                  kBankChunk.substr(16));
}

TEST(Preset, FillsAndCutsNames) {
    Preset preset = presetFromBytes(kProgramOfTwo);
    preset.programs[0].name = std::string(40, 'n');
    const std::string bytes = bytesOf(preset);
    EXPECT_EQ(bytes.size(), kProgramOfTwo.size());
    EXPECT_EQ(presetFromBytes(bytes).programs[0].name, std::string(27, 'n'));
}

TEST(Preset, RefusesEveryShorterFile) {
    for (const std::string& bytes : {kProgramOfTwo, kProgramChunk, kBankChunk, bank(2, 1)}) {
        for (std::size_t size = 4; size < bytes.size(); ++size) {
            EXPECT_THAT(refusal(bytes.substr(0, size)), HasSubstr("cut short")) << size;
        }
        EXPECT_EQ(refusal(bytes), "no refusal");
    }
}

TEST(Preset, RefusesWhatIsNone) {
    EXPECT_THAT(refusal("RIFF" + kProgramOfTwo.substr(4)), HasSubstr("does not begin with CcnK"));
    std::string other = kProgramOfTwo;
    other.replace(8, 4, "FxXx");
    EXPECT_THAT(refusal(other), HasSubstr("a kind that is not known"));
    std::string endless = kProgramOfTwo;
    endless.replace(24, 4, "\x7f\xff\xff\xff");
    EXPECT_THAT(refusal(endless), HasSubstr("2147483647 parameters"));
    std::string nan = kProgramOfTwo;
    nan.replace(60, 4, "\x7f\xc0\0\0"s);
    EXPECT_THAT(refusal(nan), HasSubstr("parameter 1 of \"Warm\" is not a finite number"));
    std::string inner = bank(2, 0);
    inner.replace(156 + 8, 4, "FBCh");
    EXPECT_THAT(refusal(inner), HasSubstr("program 0"));
}

TEST(Preset, FileIsNamedByItsKind) {
    EXPECT_EQ(presetKindFor("a/b.fxp"), Preset::Kind::kProgram);
    EXPECT_EQ(presetKindFor("b.FXB"), Preset::Kind::kBank);
    EXPECT_THROW(presetKindFor("b.xml"), UserError);
    EXPECT_THROW(presetKindFor("fxp"), UserError);
}

TEST(EffectState, OfOneProgramComesBack) {
    EffectInstance effect(loadTestPlugin("Gain"));
    loadPreset(effect, presetFromBytes(kProgramOfTwo), "the.fxp");
    EXPECT_EQ(effect.parameter(0), 0.5f);
    EXPECT_EQ(effect.parameter(1), 0.25f);
    const Preset saved = presetOf(effect, Preset::Kind::kProgram);
    EXPECT_EQ(saved.uniqueId, 0x54737431);
    EXPECT_EQ(saved.effectVersion, 7);
    EXPECT_THAT(valuesOf(saved.programs.at(0)), ElementsAre(0.5f, 0.25f));
}

TEST(EffectState, OfABankComesBackWithTheSelectedProgramAsItWas) {
    EffectInstance effect(loadTestPlugin("Gain"));
    effect.setProgram(1);
    effect.setParameter(0, 0.125f);
    const Preset saved = presetOf(effect, Preset::Kind::kBank);
    ASSERT_EQ(saved.programs.size(), 3u);
    EXPECT_EQ(saved.currentProgram, 1);
    EXPECT_EQ(valuesOf(saved.programs[0])[0], 1.0f);
    EXPECT_EQ(valuesOf(saved.programs[1])[0], 0.125f);
    EXPECT_EQ(valuesOf(saved.programs[2])[0], 0.25f);
}

TEST(EffectState, GoesThroughChunksWhereTheEffectHasThem) {
    Preset program;
    Preset bank;
    {
        EffectInstance effect(loadTestPlugin("Chunky"));
        effect.setProgram(2);
        effect.setParameter(0, 0.1f);
        program = presetOf(effect, Preset::Kind::kProgram);
        bank = presetOf(effect, Preset::Kind::kBank);
    }
    EXPECT_EQ(program.programs.at(0).name, "Number 2");
    EXPECT_EQ(std::get<std::string>(program.programs.at(0).state).size(), 4u);
    ASSERT_TRUE(bank.bankChunk.has_value());
    EXPECT_EQ(bank.bankChunkPrograms, 3);

    EffectInstance effect(loadTestPlugin("Chunky"));
    effect.setProgram(1);
    loadPreset(effect, program, "the.fxp");
    EXPECT_EQ(effect.parameter(0), 0.1f);
    effect.setProgram(2);
    EXPECT_EQ(effect.parameter(0), 0.75f);
    loadPreset(effect, bank, "the.fxb");
    EXPECT_EQ(effect.parameter(0), 0.1f);
    effect.setProgram(1);
    EXPECT_EQ(effect.parameter(0), 0.5f);
}

TEST(EffectState, OfFewerParametersLeavesTheOthers) {
    EffectInstance effect(loadTestPlugin("Gain"));
    effect.setParameter(1, 0.75f);
    Preset older = presetFromBytes(kProgramOfTwo);
    older.programs[0].state = std::vector<float>{0.5f};
    loadPreset(effect, older, "the.fxp");
    EXPECT_EQ(effect.parameter(0), 0.5f);
    EXPECT_EQ(effect.parameter(1), 0.75f);
}

TEST(EffectState, RefusesWhatBelongsElsewhere) {
    Preset preset = presetFromBytes(kProgramOfTwo);
    EXPECT_EQ(refusalBy("OtherGain", preset),
              "the.fxp belongs to the plug-in \"Tst1\", and Gain is \"Tst2\"; give a preset of "
              "Gain");
    preset.programs[0].state = std::vector<float>(3, 0.5f);
    EXPECT_THAT(refusalBy("Gain", preset), HasSubstr("holds 3 parameters, and Gain has 2"));
    preset.programs[0].state = std::string("chunk");
    EXPECT_THAT(refusalBy("Gain", preset), HasSubstr("holds a chunk, and Gain takes none"));
    Preset bankOfFour = presetFromBytes(bank(2, 1));
    bankOfFour.programs.resize(4, bankOfFour.programs[0]);
    EXPECT_THAT(refusalBy("Gain", bankOfFour), HasSubstr("holds 4 programs, and Gain has 3"));
    Preset declined = presetFromBytes(kProgramChunk);
    declined.effectVersion = 99;
    EXPECT_THAT(refusalBy("Chunky", declined), HasSubstr("Chunky declines the.fxp"));
}
