#include "plugin/AudioEffectX.h"
#include "tests/plugin/PlainEffect.h"

#include <gtest/gtest.h>

#include <malloc.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

// An arrangement of any number of speakers, in memory of its own, each speaker different.
class Arrangement {
public:
    explicit Arrangement(VstInt32 channels)
        : bytes_(8 + sizeof(VstSpeakerProperties) * static_cast<std::size_t>(channels)) {
        get()->type = 17;
        get()->numChannels = channels;
        for (VstInt32 i = 0; i < channels; ++i) {
            VstSpeakerProperties speaker;
            std::memset(&speaker, 0x40 + i, sizeof(speaker));
            std::memcpy(bytes_.data() + 8 + sizeof(speaker) * static_cast<std::size_t>(i), &speaker,
                        sizeof(speaker));
        }
    }
    VstSpeakerArrangement* get() { return reinterpret_cast<VstSpeakerArrangement*>(bytes_.data()); }

private:
    std::vector<char> bytes_;
};

std::string bytesOf(const VstSpeakerArrangement* arrangement) {
    return std::string(reinterpret_cast<const char*>(arrangement),
                       8 + 112 * static_cast<std::size_t>(arrangement->numChannels));
}

} // namespace

TEST(SpeakerArrangement, AllocationIsZeroedButForTheChannelCount) {
    PlainEffectX effect;
    for (const VstInt32 channels : {1, 2, 8, 9, 40}) {
        VstSpeakerArrangement* arrangement = nullptr;
        EXPECT_TRUE(effect.allocateArrangement(&arrangement, channels));
        ASSERT_NE(arrangement, nullptr);
        std::string expected(8 + 112 * static_cast<std::size_t>(channels), '\0');
        std::memcpy(expected.data() + 4, &channels, sizeof(channels));
        EXPECT_EQ(bytesOf(arrangement), expected) << channels;
        // The allocator rounds up by less than this.
        EXPECT_LT(malloc_usable_size(arrangement), expected.size() + 16) << channels;
        EXPECT_TRUE(effect.deallocateArrangement(&arrangement));
        EXPECT_EQ(arrangement, nullptr);
    }
}

TEST(SpeakerArrangement, AllocationReleasesWhatStoodThere) {
    PlainEffectX effect;
    VstSpeakerArrangement* arrangement = nullptr;
    for (const VstInt32 channels : {8, 2, 0, 12}) { // the leak detector watches
        EXPECT_TRUE(effect.allocateArrangement(&arrangement, channels));
        EXPECT_EQ(arrangement->numChannels, channels);
    }
    effect.deallocateArrangement(&arrangement);
}

TEST(SpeakerArrangement, DeallocationOfNothingSucceeds) {
    PlainEffectX effect;
    VstSpeakerArrangement* arrangement = nullptr;
    EXPECT_TRUE(effect.deallocateArrangement(&arrangement));
    EXPECT_EQ(arrangement, nullptr);
}

TEST(SpeakerArrangement, CopyOfASpeakerTakesEveryFieldAndEndsTheName) {
    PlainEffectX effect;
    VstSpeakerProperties from;
    std::memset(&from, 'x', sizeof(from)); // no terminator in the name
    from.azimuth = 1.5f;
    from.elevation = -0.5f;
    from.radius = 2.0f;
    from.reserved = 3.0f;
    from.type = 9;
    VstSpeakerProperties to;
    std::memset(&to, 0, sizeof(to));
    EXPECT_TRUE(effect.copySpeaker(&to, &from));
    VstSpeakerProperties expected = from;
    expected.name[63] = 0;
    EXPECT_EQ(std::memcmp(&to, &expected, sizeof(expected)), 0);
}

TEST(SpeakerArrangement, CopyOfAShortNameIsZeroFilled) {
    PlainEffectX effect;
    VstSpeakerProperties from = {};
    std::strcpy(from.name, "Left");
    from.name[10] = 'z'; // behind the terminator
    VstSpeakerProperties to;
    std::memset(&to, 'y', sizeof(to));
    EXPECT_TRUE(effect.copySpeaker(&to, &from));
    EXPECT_EQ(std::string(to.name, 64), std::string("Left") + std::string(60, '\0'));
}

TEST(SpeakerArrangement, CopyFromOrToNothingFails) {
    PlainEffectX effect;
    VstSpeakerProperties speaker = {};
    EXPECT_FALSE(effect.copySpeaker(nullptr, &speaker));
    EXPECT_FALSE(effect.copySpeaker(&speaker, nullptr));
    EXPECT_FALSE(effect.copySpeaker(nullptr, nullptr));
}

TEST(SpeakerArrangement, MatchMakesACopyOfAnyLength) {
    PlainEffectX effect;
    VstSpeakerArrangement* to = nullptr;
    for (const VstInt32 channels : {2, 0, 8, 9, 24, 63, 64, 65, 200}) {
        Arrangement from(channels);
        EXPECT_TRUE(effect.matchArrangement(&to, from.get()));
        ASSERT_NE(to, nullptr);
        Arrangement expected(channels);
        for (VstInt32 i = 0; i < channels; ++i) { // names end at their last character
            reinterpret_cast<char*>(expected.get())[8 + 112 * i + 16 + 63] = 0;
        }
        EXPECT_EQ(bytesOf(to), bytesOf(expected.get())) << channels;
    }
    effect.deallocateArrangement(&to);
}

TEST(SpeakerArrangement, MatchOfNothingLeavesTheTargetAlone) {
    PlainEffectX effect;
    VstSpeakerArrangement* to = nullptr;
    effect.allocateArrangement(&to, 3);
    VstSpeakerArrangement* const before = to;
    EXPECT_FALSE(effect.matchArrangement(&to, nullptr));
    EXPECT_EQ(to, before);
    EXPECT_EQ(to->numChannels, 3);
    effect.deallocateArrangement(&to);
}

namespace {

class FailingSteps : public PlainEffectX {
public:
    bool allocateArrangement(VstSpeakerArrangement** arrangement, VstInt32 channels) override {
        steps.push_back("allocate " + std::to_string(channels));
        return allocates && PlainEffectX::allocateArrangement(arrangement, channels);
    }
    bool deallocateArrangement(VstSpeakerArrangement** arrangement) override {
        steps.push_back("deallocate");
        return deallocates && PlainEffectX::deallocateArrangement(arrangement);
    }
    bool copySpeaker(VstSpeakerProperties* to, VstSpeakerProperties* from) override {
        steps.push_back("copy");
        return --copies >= 0 && PlainEffectX::copySpeaker(to, from);
    }

    std::vector<std::string> steps;
    bool allocates = true;
    bool deallocates = true;
    int copies = 100; // until one fails
};

using Steps = std::vector<std::string>;

} // namespace

TEST(SpeakerArrangement, MatchStopsAtTheFirstStepThatFails) {
    Arrangement from(3);
    {
        FailingSteps effect;
        effect.deallocates = false;
        VstSpeakerArrangement* to = nullptr;
        EXPECT_FALSE(effect.matchArrangement(&to, from.get()));
        EXPECT_EQ(effect.steps, (Steps{"deallocate"}));
    }
    {
        FailingSteps effect;
        effect.allocates = false;
        VstSpeakerArrangement* to = nullptr;
        EXPECT_FALSE(effect.matchArrangement(&to, from.get()));
        EXPECT_EQ(effect.steps, (Steps{"deallocate", "allocate 3"}));
    }
    {
        FailingSteps effect;
        effect.copies = 1;
        VstSpeakerArrangement* to = nullptr;
        EXPECT_FALSE(effect.matchArrangement(&to, from.get()));
        EXPECT_EQ(effect.steps, (Steps{"deallocate", "allocate 3", "copy", "copy"}));
        EXPECT_EQ(to->type, 17);
        effect.PlainEffectX::deallocateArrangement(&to);
    }
}
