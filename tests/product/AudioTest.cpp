// The sound of the built plug-in, against the model.
#include "tests/product/BuiltPlugin.h"

#include "tests/support/Bits.h"
#include "tests/support/RandomSeed.h"
#include "tests/support/RecordScript.h"
#include "tests/support/ReferenceDelay.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

class Audio : public BuiltPlugin {};

// A block through both, and whether it came out the same.
bool sameBlock(const Instance& instance, ReferenceDelay& model, std::uint64_t seed,
               std::int32_t frames) {
    const auto count = static_cast<std::size_t>(frames);
    std::vector<float> own(2 * count);
    fillSignal(Signal::kNoise, seed, own.data(), own.size());
    std::vector<float> expected = own;
    float* ownChannels[2] = {own.data(), own.data() + count};
    float* expectedChannels[2] = {expected.data(), expected.data() + count};
    instance->processReplacing(instance.record(), ownChannels, ownChannels, frames);
    model.process(expectedChannels, expectedChannels, frames);
    return firstDifference(own.data(), expected.data(), own.size()) < 0;
}

} // namespace

TEST_F(Audio, RandomScriptsGiveTheModelsBits) {
    const std::uint64_t first = randomSeed(50000);
    for (std::uint64_t seed = first; seed < first + 60; ++seed) {
        const Instance instance(plugin);
        RecordScript script(instance.record(), generateScript(seed, 60));
        ASSERT_EQ(script.run(), "") << "TVDELAY_TEST_SEED=" << seed << " begins with this script";
    }
}

TEST_F(Audio, EveryProgramGivesTheModelsBits) {
    const Instance instance(plugin);
    ReferenceDelay model;
    for (std::int32_t program = 0; program < 26; ++program) {
        instance.ask(effSetProgram, 0, program);
        model.setProgram(program);
        for (std::uint64_t block = 0; block < 40; ++block) {
            ASSERT_TRUE(sameBlock(instance, model, block, 1000)) << program << ", " << block;
        }
    }
}

TEST_F(Audio, ManyInstancesInTurnDoNotMeet) {
    constexpr std::size_t kInstances = 64;
    const std::uint64_t seed = randomSeed(60000);
    std::vector<std::unique_ptr<Instance>> instances;
    std::vector<RecordScript> scripts;
    for (std::size_t i = 0; i < kInstances; ++i) {
        instances.push_back(std::make_unique<Instance>(plugin));
        scripts.emplace_back(instances.back()->record(), generateScript(seed + i, 30));
    }
    while (!scripts.front().ended()) {
        for (std::size_t i = 0; i < kInstances; ++i) {
            ASSERT_EQ(scripts[i].step(), "") << "instance " << i << ", seed " << seed;
        }
    }
}

TEST_F(Audio, InstanceGoesOnWhileOthersComeAndGo) {
    const Instance instance(plugin);
    ReferenceDelay model;
    for (std::uint64_t block = 0; block < 30; ++block) {
        Instance other(plugin);
        other.ask(effSetProgram, 0, 11);
        ASSERT_TRUE(sameBlock(instance, model, block, 512)) << block;
        EXPECT_EQ(other.close(), 1);
        ASSERT_TRUE(sameBlock(instance, model, block + 100, 512)) << block;
    }
}

TEST_F(Audio, BlocksLargerThanAnnouncedAreFine) {
    const Instance instance(plugin);
    ReferenceDelay model;
    instance.ask(effSetBlockSize, 0, 32);
    EXPECT_TRUE(sameBlock(instance, model, 1, 20000));
}

TEST_F(Audio, NothingHasToBeSwitchedOnFirst) {
    const Instance instance(plugin); // neither opened nor resumed
    ReferenceDelay model;
    EXPECT_TRUE(sameBlock(instance, model, 2, 9000));
}

TEST_F(Audio, BlocksOfDifferentThreadsInTurnAreFine) {
    const Instance instance(plugin);
    ReferenceDelay model;
    for (std::uint64_t block = 0; block < 20; ++block) {
        bool same = false;
        std::thread thread([&] { same = sameBlock(instance, model, block, 700); });
        thread.join();
        ASSERT_TRUE(same) << block;
    }
}

TEST_F(Audio, DoubleAndAccumulatingEntriesDoNothing) {
    const Instance instance(plugin);
    double wide[4] = {1.0, 2.0, 3.0, 4.0};
    double* wideChannels[2] = {wide, wide + 2};
    instance->processDoubleReplacing(instance.record(), wideChannels, wideChannels, 2);
    EXPECT_EQ(std::vector<double>(wide, wide + 4), (std::vector<double>{1.0, 2.0, 3.0, 4.0}));
    float narrow[4] = {1.0f, 2.0f, 3.0f, 4.0f};
    float* narrowChannels[2] = {narrow, narrow + 2};
    instance->process(instance.record(), narrowChannels, narrowChannels, 2);
    EXPECT_EQ(std::vector<float>(narrow, narrow + 4), (std::vector<float>{1.0f, 2.0f, 3.0f, 4.0f}));
    ReferenceDelay model;
    EXPECT_TRUE(sameBlock(instance, model, 3, 9000)) << "they left something behind";
}
