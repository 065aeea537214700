// The macOS bundle's code beside that of the Linux bundle, bit for bit.
#include "tests/bundle/MacBundle.h"
#include "tests/bundle/RecordPair.h"
#include "tests/bundle/StandIns.h"

#include "plugin/vst2/EffectOpcodes.h"
#include "tests/support/Dice.h"
#include "tests/support/LoadedPlugin.h"
#include "tests/support/RandomSeed.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

constexpr std::size_t kScripts = 50; // of each test
constexpr std::size_t kSteps = 60;

// The two bundles, loaded once: instances leave memory behind that lies in them.
RunningMacBundle& mac() {
    static RunningMacBundle bundle;
    return bundle;
}

const LoadedPlugin& linuxPlugin() {
    static const LoadedPlugin plugin(TVDELAY_PLUGIN_PATH);
    return plugin;
}

RecordPair newPair() {
    return RecordPair(mac().entry(), linuxPlugin().entry());
}

VstIntPtr hostWithoutVersion(AEffect*, VstInt32, VstInt32, VstIntPtr, void*, float) {
    return 0;
}

std::string runScripts(std::uint64_t first) {
    for (std::uint64_t seed = first; seed < first + kScripts; ++seed) {
        RecordPair pair = newPair();
        std::size_t number = 0;
        for (const ScriptStep& step : generateScript(seed, kSteps)) {
            const std::string difference = pair.run(step);
            if (!difference.empty()) {
                return "TVDELAY_TEST_SEED=" + std::to_string(seed) + " step " +
                       std::to_string(number) + ", " + step.text() + ": " + difference;
            }
            ++number;
        }
    }
    return "";
}

// What these do hangs on what their pointer leads to, or they end the instance or show its editor.
bool needsMoreThanMemory(VstInt32 opcode) {
    switch (opcode) {
    case effClose:
    case effEditGetRect:
    case effEditOpen:
    case effGetChunk:
    case effGetSpeakerArrangement:
        return true;
    default:
        return false;
    }
}

class BundleScripts : public testing::TestWithParam<std::uint64_t> {};

const char* const kAvxKernel = "__Z17renderSubBlockAvxR8SubBlock";
const char* const kSse2Kernel = "__Z18renderSubBlockSse2R8SubBlock";

// Where the code keeps which kernel it takes.
void** kernelChoice() {
    return static_cast<void**>(mac().image().local("_kRenderSubBlock"));
}

// Lets the code take the kernel for machines without AVX.
class WithoutAvx {
public:
    WithoutAvx() : choice_(kernelChoice()), chosen_(*choice_) {
        *choice_ = mac().image().local(kSse2Kernel);
    }
    ~WithoutAvx() { *choice_ = chosen_; }
    WithoutAvx(const WithoutAvx&) = delete;
    WithoutAvx& operator=(const WithoutAvx&) = delete;

private:
    void** choice_;
    void* chosen_;
};

} // namespace

TEST(BundleRun, GivesNoInstanceToAHostWithoutAVersion) {
    EXPECT_EQ(mac().entry()(hostWithoutVersion), nullptr);
}

TEST(BundleRun, ShowsTheSameRecord) {
    EXPECT_EQ(newPair().recordDifference(), "");
}

TEST(BundleRun, FindsItsBundleAndGivesItBack) {
    {
        const RecordPair pair = newPair();
        EXPECT_EQ(standInBundleDirectory(), macBundle());
        EXPECT_EQ(standInObjectsAlive(), 1);
    }
    EXPECT_EQ(standInObjectsAlive(), 0);
}

TEST(BundleRun, TellsTheEditorsSize) {
    AEffect* const effect = mac().entry()(plainHost);
    ERect* rect = nullptr;
    EXPECT_EQ(effect->dispatcher(effect, effEditGetRect, 0, 0, &rect, 0.0f), 1);
    EXPECT_EQ(rect->top, 0);
    EXPECT_EQ(rect->left, 0);
    EXPECT_EQ(rect->bottom, 400);
    EXPECT_EQ(rect->right, 344);
    effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
}

TEST(BundleRun, AnswersEveryOpcodeAlike) {
    RecordPair pair = newPair();
    for (VstInt32 opcode = -1; opcode <= effGetNumMidiOutputChannels + 1; ++opcode) {
        if (needsMoreThanMemory(opcode)) {
            continue;
        }
        // A host is trusted not to ask for the name of a program below 0.
        const VstInt32 lowest = opcode == effGetProgramNameIndexed ? 0 : -1;
        for (VstInt32 index = lowest; index <= 26; ++index) {
            ASSERT_EQ(pair.dispatch(opcode, index, index, "receiveVstMidiEvent", 0.25f), "");
        }
    }
    EXPECT_EQ(pair.stateDifference(), "");
}

TEST(BundleRun, NamesItsProgramsAlike) {
    RecordPair pair = newPair();
    Dice dice(randomSeed(77));
    for (VstInt32 program = 0; program < 26; ++program) {
        ASSERT_EQ(pair.dispatch(effGetProgramNameIndexed, program, 0, "", 0.0f), "");
        ASSERT_EQ(pair.dispatch(effSetProgram, 0, program, "", 0.0f), "");
        ASSERT_EQ(pair.stateDifference(), "");
        const std::string name(static_cast<std::size_t>(dice.between(0, 40)), 'n');
        ASSERT_EQ(pair.dispatch(effSetProgramName, 0, 0, name, 0.0f), "");
        ASSERT_EQ(pair.dispatch(effGetProgramNameIndexed, program, 0, "", 0.0f), "");
    }
}

TEST(BundleRun, WritesTheSameTextsForAnyValue) {
    const std::uint64_t seed = randomSeed(88);
    Dice dice(seed);
    RecordPair pair = newPair();
    for (int i = 0; i < 20000; ++i) {
        const auto index = static_cast<VstInt32>(dice.between(0, 8));
        // kDelay takes only what the delay lines hold.
        const float value = index == 0 || dice.oneIn(2) ? dice.within(0.0f, 1.0f) : dice.anyFloat();
        ASSERT_EQ(pair.setParameter(index, value), "") << "TVDELAY_TEST_SEED=" << seed;
        ASSERT_EQ(pair.dispatch(effGetParamDisplay, index, 0, "before", 0.0f), "")
            << "TVDELAY_TEST_SEED=" << seed << " value " << value;
    }
}

TEST(BundleRun, KeepsInstancesApart) {
    AEffect* const one = mac().entry()(plainHost);
    AEffect* const other = mac().entry()(plainHost);
    ASSERT_NE(one, other);
    const float before = other->getParameter(other, 1);
    one->setParameter(one, 1, before + 0.25f);
    EXPECT_EQ(one->getParameter(one, 1), before + 0.25f);
    EXPECT_EQ(other->getParameter(other, 1), before);
    for (AEffect* const effect : {one, other}) {
        effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
    }
}

TEST(BundleRun, TakesTheKernelOfTheMachine) {
    const bool avx = __builtin_cpu_supports("avx") != 0;
    EXPECT_EQ(*kernelChoice(), mac().image().local(avx ? kAvxKernel : kSse2Kernel));
}

TEST_P(BundleScripts, GiveTheSameBits) {
    EXPECT_EQ(runScripts(randomSeed(GetParam())), "");
}

TEST_P(BundleScripts, GiveTheSameBitsWithoutAvx) {
    const WithoutAvx without;
    EXPECT_EQ(runScripts(randomSeed(GetParam() + kScripts)), "");
}

INSTANTIATE_TEST_SUITE_P(Seeds, BundleScripts, testing::Values(11000, 12000, 13000, 14000));
