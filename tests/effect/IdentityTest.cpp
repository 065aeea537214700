#include "effect/VstXSynth.h"

#include "tests/support/LoadedPlugin.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>

namespace {

std::string padded(const std::string& text, std::size_t size) {
    std::string result = text;
    result.resize(size, '\0');
    return result;
}

class Identity : public testing::Test {
protected:
    // All bytes of a field of 80 after `ask`, the ones behind the limit as well.
    template <typename Ask>
    std::string field(Ask ask) {
        std::string bytes(80, '#');
        ask(bytes.data());
        return bytes;
    }

    VstXSynth effect{plainHost};
};

} // namespace

TEST_F(Identity, NamesAreZeroFilledToTheirLimits) {
    EXPECT_EQ(field([&](char* text) { EXPECT_TRUE(effect.getEffectName(text)); }),
              padded("TvDelay", 33) + std::string(47, '#'));
    EXPECT_EQ(field([&](char* text) { EXPECT_TRUE(effect.getVendorString(text)); }),
              padded("Tarnvale Music", 65) + std::string(15, '#'));
    EXPECT_EQ(field([&](char* text) { EXPECT_TRUE(effect.getProductString(text)); }),
              padded("Tarnvale's Delay", 65) + std::string(15, '#'));
}

TEST_F(Identity, VersionsDiffer) {
    EXPECT_EQ(effect.getVendorVersion(), 1000);
    EXPECT_EQ(effect.getAeffect()->version, 1);
    EXPECT_EQ(effect.getVstVersion(), 2400);
}

TEST_F(Identity, EveryCapabilityIsRefusedUnread) {
    for (const char* text : {"sendVstEvents", "receiveVstMidiEvent", "offline", "bypass", ""}) {
        EXPECT_EQ(effect.canDo(const_cast<char*>(text)), -1) << text;
    }
    EXPECT_EQ(effect.canDo(nullptr), -1);
    EXPECT_EQ(effect.dispatcher(effCanDo, 0, 0, nullptr, 0.0f), -1);
}

TEST_F(Identity, CategoryIsEffectWhateverTheFlagsSay) {
    EXPECT_EQ(effect.getPlugCategory(), 1);
    effect.isSynth(true);
    EXPECT_EQ(effect.getPlugCategory(), 1);
    EXPECT_EQ(effect.dispatcher(effGetPlugCategory, 0, 0, nullptr, 0.0f), 1);
}

TEST_F(Identity, NothingOfMidiIsOffered) {
    EXPECT_EQ(effect.getNumMidiInputChannels(), 0);
    EXPECT_EQ(effect.getNumMidiOutputChannels(), 0);
    EXPECT_FALSE(effect.hasMidiProgramsChanged(0));
    EXPECT_FALSE(effect.hasMidiProgramsChanged(-1));
}

TEST_F(Identity, KeyNameIsEmptiedAndTheRestOfItsRecordKept) {
    MidiKeyName key;
    std::memset(&key, 'k', sizeof(key));
    EXPECT_FALSE(effect.getMidiKeyName(3, &key));
    MidiKeyName expected;
    std::memset(&expected, 'k', sizeof(expected));
    expected.keyName[0] = 0;
    expected.reserved = 0;
    expected.flags = 0;
    EXPECT_EQ(std::memcmp(&key, &expected, sizeof(key)), 0);
}

TEST_F(Identity, OutputPinsAreLabelled) {
    for (const auto& [index, label] :
         {std::pair<VstInt32, const char*>{0, "TvDy 1"}, {1, "TvDy 2"}}) {
        VstPinProperties pin;
        std::memset(&pin, 'p', sizeof(pin));
        EXPECT_TRUE(effect.getOutputProperties(index, &pin));
        VstPinProperties expected;
        std::memset(&expected, 'p', sizeof(expected));
        std::memset(expected.label, 0, sizeof(expected.label));
        std::strcpy(expected.label, label);
        expected.flags = 3;
        EXPECT_EQ(std::memcmp(&pin, &expected, sizeof(pin)), 0) << index;
        EXPECT_EQ(pin.flags, kVstPinIsActive | kVstPinIsStereo);
    }
}

TEST_F(Identity, PinsBehindTheSecondAreNone) {
    for (const VstInt32 index : {2, 3, std::numeric_limits<VstInt32>::max()}) {
        VstPinProperties pin;
        std::memset(&pin, 'p', sizeof(pin));
        EXPECT_FALSE(effect.getOutputProperties(index, &pin));
        const std::string untouched(sizeof(pin), 'p');
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(&pin), sizeof(pin)), untouched);
    }
}

TEST_F(Identity, NegativePinsPassTheTest) {
    VstPinProperties pin;
    EXPECT_TRUE(effect.getOutputProperties(-1, &pin));
    EXPECT_STREQ(pin.label, "TvDy ");
    EXPECT_TRUE(effect.getOutputProperties(-8, &pin));
    EXPECT_STREQ(pin.label, "TvDy -7");
    EXPECT_EQ(pin.flags, 3);
}

TEST_F(Identity, PinNumberIsWrittenByTheVirtualConversion) {
    struct Spelling : VstXSynth {
        Spelling() : VstXSynth(plainHost) {}
        void int2string(VstInt32 value, char* text, VstInt32 maxLen) override {
            asked = value;
            limit = maxLen;
            std::strcpy(text, "one");
        }
        VstInt32 asked = -1;
        VstInt32 limit = -1;
    };
    Spelling spelling;
    VstPinProperties pin;
    EXPECT_TRUE(spelling.getOutputProperties(0, &pin));
    EXPECT_EQ(spelling.asked, 1);
    EXPECT_EQ(spelling.limit, 10);
    EXPECT_STREQ(pin.label, "TvDy one");
}

TEST_F(Identity, InputPinsHaveNoDescription) {
    VstPinProperties pin;
    std::memset(&pin, 'p', sizeof(pin));
    EXPECT_FALSE(effect.getInputProperties(0, &pin));
    EXPECT_EQ(pin.label[0], 'p');
    EXPECT_EQ(effect.dispatcher(effGetInputProperties, 1, 0, &pin, 0.0f), 0);
}
