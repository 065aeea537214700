// The host's process after all that a host may ask of the plug-in, in every short order. Each order
// has a process of its own: what the first message to any object does is done once.
#include "tests/editor/ProcessState.h"
#include "tests/support/LoadedPlugin.h"
#include "tests/support/screen/HostWindow.h"
#include "tests/support/screen/XServer.h"

#include "plugin/vst2/EffectOpcodes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace {

// What a host calls: an opcode of the dispatcher, or one of the record's other entries.
constexpr int kOpcodes = 80;
constexpr int kSetParameter = kOpcodes;
constexpr int kProcessReplacing = kOpcodes + 1;
constexpr int kCalls = kOpcodes + 2;

using Order = std::vector<int>;

class Caller {
public:
    Caller(const LoadedPlugin& plugin, void* parent)
        : effect_(plugin.entry()(plainHost)), parent_(parent) {}
    ~Caller() { run(effClose); }
    Caller(const Caller&) = delete;
    Caller& operator=(const Caller&) = delete;

    void run(int call) {
        if (effect_ == nullptr) {
            return;
        }
        if (call == kSetParameter) {
            effect_->setParameter(effect_, 1, 0.5f);
        } else if (call == kProcessReplacing) {
            std::array<float, 32> left{}, right{};
            float* buffers[] = {left.data(), right.data()};
            effect_->processReplacing(effect_, buffers, buffers, 32);
        } else {
            // Room for whatever an opcode writes, zeros for what it reads.
            std::array<char, 4096> buffer{}, other{};
            void* const ptr = call == effEditOpen ? parent_ : buffer.data();
            const bool takesTwo =
                call == effSetSpeakerArrangement || call == effGetSpeakerArrangement;
            const VstIntPtr value = takesTwo ? reinterpret_cast<VstIntPtr>(other.data()) : 0;
            effect_->dispatcher(effect_, call, 0, value, ptr, 0.5f);
            effect_ = call == effClose ? nullptr : effect_;
        }
    }

private:
    AEffect* effect_;
    void* parent_;
};

void ignore(int) {}

// A host with habits of its own.
void adoptHabits() {
    setenv("LC_ALL", "C.UTF-8", 1); // but keeps to the locale "C"
    std::signal(SIGPIPE, SIG_DFL);
    std::signal(SIGTERM, ignore);
    std::signal(SIGCHLD, ignore);
}

// What has changed in a process after the calls of `order`; the window is made in that process.
std::string changesAfter(const LoadedPlugin& plugin, const Order& order, bool withDisplay) {
    int ends[2];
    if (pipe(ends) != 0) {
        return "no pipe";
    }
    const pid_t process = fork();
    if (process == 0) {
        adoptHabits();
        const auto window = withDisplay ? std::make_unique<HostWindow>(10, 10) : nullptr;
        void* const parent = withDisplay ? window->handle() : reinterpret_cast<void*>(0x400001);
        const auto before = processState();
        {
            Caller caller(plugin, parent);
            for (const int call : order) {
                caller.run(call);
            }
        }
        const std::string lines = differences(before, processState()) + ".";
        _exit(write(ends[1], lines.data(), lines.size()) > 0 ? 0 : 1);
    }
    close(ends[1]);
    std::string lines;
    std::array<char, 4096> buffer;
    for (ssize_t got; (got = read(ends[0], buffer.data(), buffer.size())) > 0;) {
        lines.append(buffer.data(), static_cast<std::size_t>(got));
    }
    close(ends[0]);
    int status = 0;
    waitpid(process, &status, 0);
    if (status != 0 || lines.empty()) {
        return "ended with status " + std::to_string(status);
    }
    lines.pop_back();
    return lines;
}

std::string textOf(const Order& order) {
    std::string text;
    for (const int call : order) {
        text += std::to_string(call) + " ";
    }
    return text;
}

std::vector<Order> ordersOf(const std::vector<int>& calls, int length) {
    std::vector<Order> orders{{}};
    for (int i = 0; i < length; ++i) {
        std::vector<Order> longer;
        for (const Order& order : orders) {
            for (const int call : calls) {
                longer.push_back(order);
                longer.back().push_back(call);
            }
        }
        orders = std::move(longer);
    }
    return orders;
}

std::vector<int> allCalls() {
    std::vector<int> calls(kCalls);
    for (int call = 0; call < kCalls; ++call) {
        calls[static_cast<std::size_t>(call)] = call;
    }
    return calls;
}

const std::vector<int> kEditorCalls{effEditOpen,   effEditClose,  effEditIdle, effEditGetRect,
                                    kSetParameter, effSetProgram, effClose};

bool opens(const Order& order) {
    return std::find(order.begin(), order.end(), effEditOpen) != order.end();
}

} // namespace

// Ahead of the others: what a file does when it is loaded, it does once.
TEST(HostProcessAtLoading, FileChangesNothing) {
    adoptHabits();
    const auto before = processState();
    const LoadedPlugin plugin(TVDELAY_PLUGIN_PATH);
    EXPECT_EQ(differences(before, processState()), "");
}

class HostProcess : public testing::Test {
protected:
    void expectNoChange(const std::vector<Order>& orders, bool withDisplay) {
        for (const Order& order : orders) {
            ASSERT_EQ(changesAfter(plugin, order, withDisplay), "") << "calls " << textOf(order);
        }
    }

    const LoadedPlugin plugin{TVDELAY_PLUGIN_PATH};
};

TEST_F(HostProcess, NoTwoCallsChangeItWithoutADisplay) {
    unsetenv("DISPLAY");
    expectNoChange(ordersOf(allCalls(), 1), false);
    expectNoChange(ordersOf(allCalls(), 2), false);
}

TEST_F(HostProcess, NoThreeCallsOfTheEditorChangeItWithoutADisplay) {
    unsetenv("DISPLAY");
    expectNoChange(ordersOf(kEditorCalls, 3), false);
}

TEST_F(HostProcess, NoCallBeforeOrAfterTheOpeningChangesItOnADisplay) {
    sharedXServer();
    std::vector<Order> orders;
    for (const Order& order : ordersOf(allCalls(), 2)) {
        if (opens(order)) {
            orders.push_back(order);
        }
    }
    expectNoChange(orders, true);
}

TEST_F(HostProcess, NoThreeCallsOfTheEditorChangeItOnADisplay) {
    sharedXServer();
    expectNoChange(ordersOf(kEditorCalls, 3), true);
}
