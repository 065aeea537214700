#include "host/render/ChannelPlan.h"

#include <gtest/gtest.h>

using tvhost::ChannelPlan;

namespace {

using Buffers = std::vector<std::vector<float>>;

// What the inputs get of two frames of `channels` channels: 1, 2, 3 ... and 10, 20, 30 ...
Buffers spread(int channels, int inputs, int outputs = 2, bool paired = false) {
    std::vector<float> frames;
    for (const float unit : {1.0f, 10.0f}) {
        for (int c = 1; c <= channels; ++c) {
            frames.push_back(unit * static_cast<float>(c));
        }
    }
    Buffers buffers(static_cast<std::size_t>(inputs), std::vector<float>(2, 99.0f));
    ChannelPlan(channels, inputs, outputs, paired).spread(frames.data(), 2, buffers);
    return buffers;
}

std::string note(int channels, int inputs, int outputs = 2) {
    return ChannelPlan(channels, inputs, outputs, false).note("It");
}

} // namespace

TEST(ChannelPlan, GivesEachChannelItsInput) {
    EXPECT_EQ(spread(2, 2), (Buffers{{1, 10}, {2, 20}}));
    EXPECT_EQ(spread(3, 3), (Buffers{{1, 10}, {2, 20}, {3, 30}}));
    EXPECT_EQ(note(3, 3), "");
}

TEST(ChannelPlan, FeedsMonoIntoBothInputsOfAStereoEffectAlone) {
    EXPECT_EQ(spread(1, 2), (Buffers{{1, 10}, {1, 10}}));
    EXPECT_EQ(note(1, 2), "");
    // The second input of an effect with one output is a side-chain.
    EXPECT_EQ(spread(1, 2, 1), (Buffers{{1, 10}, {0, 0}}));
    EXPECT_EQ(spread(1, 4), (Buffers{{1, 10}, {0, 0}, {0, 0}, {0, 0}}));
}

TEST(ChannelPlan, GivesAnEffectOfOneInputTheMeanOfBoth) {
    EXPECT_EQ(spread(2, 1), (Buffers{{1.5f, 15}}));
    EXPECT_EQ(note(2, 1), "It takes one channel, so it got the mean of left and right");
}

TEST(ChannelPlan, KeepsTheRightChannelOutOfASideChain) {
    EXPECT_EQ(spread(2, 2, 1), (Buffers{{1.5f, 15}, {0, 0}}));
    EXPECT_EQ(note(2, 2, 1), "It takes one channel and a side-chain, so it got the mean of left "
                             "and right, and silence there");
    // What says that it takes both sides of one sound gets them.
    EXPECT_EQ(spread(2, 2, 1, true), (Buffers{{1, 10}, {2, 20}}));
    EXPECT_EQ(spread(1, 2, 1, true), (Buffers{{1, 10}, {1, 10}}));
}

TEST(ChannelPlan, LeavesFurtherInputsSilentAndSaysSo) {
    EXPECT_EQ(spread(2, 4), (Buffers{{1, 10}, {2, 20}, {0, 0}, {0, 0}}));
    EXPECT_EQ(note(2, 4), "It takes 4 channels, so inputs 3 and 4 got silence");
    EXPECT_EQ(note(2, 3), "It takes 3 channels, so input 3 got silence");
}

TEST(ChannelPlan, LeavesFurtherChannelsOutAndSaysSo) {
    EXPECT_EQ(spread(4, 1), (Buffers{{1, 10}}));
    EXPECT_EQ(note(4, 1), "It takes 1 channel, so channels 2 to 4 of the input were left out");
    EXPECT_EQ(note(3, 2), "It takes 2 channels, so channel 3 of the input was left out");
}
