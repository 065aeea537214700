// What the audio thread must not do, and the one place where it does.
#include "effect/VstXSynth.h"

#include "editor/tveditor13.h"
#include "plugin/VSTPluginMain.h"
#include "tests/support/CallTraps.h"
#include "tests/support/Dice.h"
#include "tests/support/LoadedPlugin.h"

#include <gtest/gtest.h>
#include <linux/seccomp.h>
#include <pthread.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <initializer_list>
#include <new>
#include <string>
#include <vector>

namespace {

constexpr VstInt32 kLargest = 1024;

// An instance seen through its record, with the memory for its blocks.
class Driven {
public:
    Driven() : record_(VSTPluginMain(plainHost)) {}
    ~Driven() { record_->dispatcher(record_, effClose, 0, 0, nullptr, 0.0f); }
    Driven(const Driven&) = delete;
    Driven& operator=(const Driven&) = delete;

    AEffect* record() const { return record_; }

    void process(VstInt32 frames) {
        for (std::size_t channel = 0; channel < 2; ++channel) {
            for (std::size_t i = 0; i < kLargest; ++i) {
                in_[channel][i] = static_cast<float>((i * 7 + channel) % 100) / 100.0f - 0.5f;
            }
        }
        float* inputs[2] = {in_[0].data(), in_[1].data()};
        float* outputs[2] = {out_[0].data(), out_[1].data()};
        record_->processReplacing(record_, inputs, outputs, frames);
    }
    bool finite() const {
        return std::all_of(out_[0].begin(), out_[0].end(),
                           [](float sample) { return std::isfinite(sample); });
    }

    // Blocks of many sizes, with all that hosts and editors write in between.
    bool drive(int rounds, std::uint64_t seed) {
        Dice dice(seed);
        bool fine = true;
        for (int round = 0; round < rounds; ++round) {
            process(static_cast<VstInt32>(dice.between(-1, kLargest)));
            fine = fine && finite();
            record_->setParameter(record_, static_cast<VstInt32>(dice.between(-1, 9)),
                                  dice.oneIn(3) ? static_cast<float>(dice.between(0, 1))
                                                : dice.within(0.0f, 0.9f));
            record_->getParameter(record_, static_cast<VstInt32>(dice.between(-1, 9)));
            if (dice.oneIn(20)) {
                record_->dispatcher(record_, effSetProgram, 0, dice.between(0, 25), nullptr, 0.0f);
            }
            if (dice.oneIn(20)) {
                record_->dispatcher(record_, effMainsChanged, 0, dice.between(0, 1), nullptr, 0.0f);
            }
        }
        return fine;
    }

private:
    AEffect* record_;
    std::array<std::array<float, kLargest>, 2> in_{};
    std::array<std::array<float, kLargest>, 2> out_{};
};

const std::vector<std::size_t> kNothing;

} // namespace

TEST(AudioThread, TrapsSeeWhatTheyAreToSee) {
    pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
    pthread_mutex_lock(&mutex);
    pthread_mutex_unlock(&mutex);
    CallTraps traps;
    void* volatile memory = std::malloc(1000);
    std::free(memory);
    char* volatile object = new char[2000];
    delete[] object;
    pthread_mutex_lock(&mutex);
    pthread_mutex_unlock(&mutex);
    const TrappedCalls calls = traps.stop();
    EXPECT_EQ(calls.allocations, (std::vector<std::size_t>{1000, 2000}));
    EXPECT_EQ(calls.frees, 2u);
    EXPECT_EQ(calls.locks, 1u);
}

TEST(AudioThread, BlocksAndWritesNeitherAllocateNorLock) {
    Driven driven;
    CallTraps traps;
    const bool fine = driven.drive(1500, 1);
    const TrappedCalls calls = traps.stop();
    EXPECT_TRUE(fine);
    EXPECT_EQ(calls.allocations, kNothing);
    EXPECT_EQ(calls.frees, 0u);
    EXPECT_EQ(calls.locks, 0u);
}

TEST(AudioThread, FirstBlockOfANewRateAllocatesFourFilters) {
    Driven driven;
    driven.process(100);
    driven.record()->dispatcher(driven.record(), effSetSampleRate, 0, 0, nullptr, 48000.0f);
    CallTraps traps;
    driven.process(100);
    const TrappedCalls first = traps.stop();
    EXPECT_EQ(first.allocations, std::vector<std::size_t>(4, sizeof(FourPoleFilter)));
    EXPECT_EQ(first.frees, 0u) << "the former filters stay";
    EXPECT_EQ(first.locks, 0u);

    CallTraps again;
    driven.process(100);
    EXPECT_EQ(again.stop().allocations, kNothing);
}

TEST(AudioThread, FractionalRateAllocatesFourFiltersAtEveryBlock) {
    Driven driven;
    driven.record()->dispatcher(driven.record(), effSetSampleRate, 0, 0, nullptr, 44100.5f);
    CallTraps traps;
    for (int block = 0; block < 5; ++block) {
        driven.process(10);
    }
    EXPECT_EQ(traps.stop().allocations, std::vector<std::size_t>(20, sizeof(FourPoleFilter)));
}

TEST(Construction, AllocatesInOrder) {
    CallTraps traps;
    AEffect* const record = VSTPluginMain(plainHost);
    TrappedCalls calls = traps.stop();
    record->dispatcher(record, effClose, 0, 0, nullptr, 0.0f);
    ASSERT_GE(calls.allocations.size(), 10u);
    calls.allocations.resize(10); // the editor looks for its bundle behind these
    EXPECT_EQ(calls.allocations,
              (std::vector<std::size_t>{sizeof(VstXSynth), 768000, 768000, 128, 128, 128, 128,
                                        179692 * sizeof(double), 26 * sizeof(DelayProgram),
                                        sizeof(tveditor13)}));
}

TEST(Construction, AllocatesNothingForAHostWithoutAVersion) {
    CallTraps traps;
    AEffect* const record = VSTPluginMain(
        [](AEffect*, VstInt32, VstInt32, VstIntPtr, void*, float) -> VstIntPtr { return 0; });
    EXPECT_EQ(traps.stop().allocations, kNothing);
    EXPECT_EQ(record, nullptr);
}

TEST(Construction, FailedAllocationLeavesAsAnExceptionAndReleasesTheObjectAlone) {
    if (!CallTraps::canFail()) {
        GTEST_SKIP() << "the sanitizer's allocator can't be made to fail";
    }
    // Until nothing is left that could fail: the editor and its bundle come last.
    std::size_t failing = 1;
    for (bool thrown = true; thrown; ++failing) {
        thrown = false;
        CallTraps traps;
        traps.failAllocation(failing);
        AEffect* record = nullptr;
        try {
            record = VSTPluginMain(plainHost);
        } catch (const std::bad_alloc&) {
            thrown = true;
        }
        const TrappedCalls calls = traps.stop();
        if (record != nullptr) {
            record->dispatcher(record, effClose, 0, 0, nullptr, 0.0f);
            break;
        }
        ASSERT_TRUE(thrown) << failing;
        if (failing > 1) {
            EXPECT_TRUE(traps.freed(traps.allocated(sizeof(VstXSynth)))) << failing;
        }
        if (failing > 10) {
            EXPECT_TRUE(traps.freed(traps.allocated(sizeof(tveditor13)))) << failing;
        }
        for (const std::size_t left : {std::size_t{768000}, sizeof(FourPoleFilter),
                                       179692 * sizeof(double), 26 * sizeof(DelayProgram)}) {
            const void* const address = traps.allocated(left);
            EXPECT_FALSE(address != nullptr && traps.freed(address)) << failing << ", " << left;
        }
    }
    EXPECT_GT(failing, 11u) << "the editor's bundle allocates as well";
}

TEST(Construction, EndFreesNothingButTheEditorAndTheObject) {
    CallTraps traps;
    AEffect* const record = VSTPluginMain(plainHost);
    const auto& effect = *static_cast<VstXSynth*>(static_cast<AudioEffect*>(record->object));
    const DelayFields fields = effect;
    record->dispatcher(record, effClose, 0, 0, nullptr, 0.0f);
    traps.stop();
    const std::initializer_list<const void*> stay = {
        fields.delayBufferLeft, fields.delayBufferRight, fields.sineTable,    fields.programs,
        fields.lowPassLeft,     fields.lowPassRight,     fields.highPassLeft, fields.highPassRight};
    for (const void* address : stay) {
        EXPECT_FALSE(traps.freed(address));
    }
    EXPECT_TRUE(traps.freed(traps.allocated(sizeof(VstXSynth))));
    EXPECT_TRUE(traps.freed(traps.allocated(sizeof(tveditor13))));
    for (const std::size_t left : {std::size_t{768000}, sizeof(FourPoleFilter),
                                   179692 * sizeof(double), 26 * sizeof(DelayProgram)}) {
        ASSERT_NE(traps.allocated(left), nullptr) << left;
        EXPECT_FALSE(traps.freed(traps.allocated(left))) << left;
    }
}

namespace {

// Runs `work` in a child that may do nothing but compute, and returns how the child ended. The
// child's result is its exit status.
template <typename Work>
int endOfConfinedChild(Work work) {
    const pid_t child = fork();
    if (child == 0) {
        constexpr int kRefused = 99;
        if (prctl(PR_SET_SECCOMP, SECCOMP_MODE_STRICT) != 0) {
            _exit(kRefused);
        }
        syscall(SYS_exit, work());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

bool refused(int status) {
    return WIFEXITED(status) && WEXITSTATUS(status) == 99;
}

constexpr char kRefusedText[] = "the system refuses to confine a process to computing";

} // namespace

TEST(AudioThread, ConfinementKillsAProcessThatCallsTheSystem) {
    const int status = endOfConfinedChild([] {
        syscall(SYS_getppid);
        return 0;
    });
    if (refused(status)) {
        GTEST_SKIP() << kRefusedText;
    }
    EXPECT_TRUE(WIFSIGNALED(status));
}

TEST(AudioThread, BlocksAndWritesMakeNoSystemCall) {
    Driven driven;
    driven.drive(100, 2);
    const int status = endOfConfinedChild([&] { return driven.drive(1500, 3) ? 0 : 1; });
    if (refused(status)) {
        GTEST_SKIP() << kRefusedText;
    }
    ASSERT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
    EXPECT_EQ(WEXITSTATUS(status), 0);
}
