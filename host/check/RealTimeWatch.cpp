#include "host/check/RealTimeWatch.h"

#include "host/check/CheckRun.h"

#include <csignal>
#include <cstdint>
#include <utility>

#include <dlfcn.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <ucontext.h>

namespace tvhost {

namespace {

namespace fs = std::filesystem;

constexpr const char* kLibrary = "tvhost-watch.so";

// From the kernel's headers, which may be older than the kernel.
constexpr int kSetSystemCallDispatch = 59;
constexpr unsigned long kDispatchOn = 1;
constexpr char kAllow = 0;
constexpr char kBlock = 1;
constexpr int kLengthOfSystemCall = 2; // bytes of the instruction

// Whether the kernel stops the thread at its next system call.
thread_local volatile char selector = kAllow;
thread_local volatile int caughtNumber = -1;
thread_local volatile std::uintptr_t caughtAddress = 0;

// Notes the call, and lets it happen after all.
void caught(int, siginfo_t* information, void* context) {
    selector = kAllow;
    auto* const machine = static_cast<ucontext_t*>(context);
    caughtNumber = information->si_syscall;
    caughtAddress = static_cast<std::uintptr_t>(machine->uc_mcontext.gregs[REG_RIP]);
    machine->uc_mcontext.gregs[REG_RIP] -= kLengthOfSystemCall;
}

WatchState* stateOfThread() {
    static const auto find =
        reinterpret_cast<WatchStateOfThread>(dlsym(RTLD_DEFAULT, kWatchStateSymbol));
    return find ? find() : nullptr;
}

std::string systemCallName(int number) {
    constexpr std::pair<int, const char*> kNames[] = {
        {SYS_read, "read"},
        {SYS_write, "write"},
        {SYS_openat, "openat"},
        {SYS_close, "close"},
        {SYS_poll, "poll"},
        {SYS_mmap, "mmap"},
        {SYS_munmap, "munmap"},
        {SYS_mprotect, "mprotect"},
        {SYS_madvise, "madvise"},
        {SYS_brk, "brk"},
        {SYS_ioctl, "ioctl"},
        {SYS_futex, "futex"},
        {SYS_sched_yield, "sched_yield"},
        {SYS_nanosleep, "nanosleep"},
        {SYS_clock_nanosleep, "clock_nanosleep"},
        {SYS_clock_gettime, "clock_gettime"},
        {SYS_gettid, "gettid"},
        {SYS_getpid, "getpid"},
        {SYS_sendto, "sendto"},
        {SYS_sendmsg, "sendmsg"},
        {SYS_recvmsg, "recvmsg"},
    };
    for (const auto& [known, name] : kNames) {
        if (known == number) {
            return name;
        }
    }
    return "system call " + std::to_string(number);
}

std::string callerWords(const void* address) {
    Dl_info information{};
    if (!address || dladdr(address, &information) == 0 || !information.dli_fname) {
        return "";
    }
    std::string words = " from " + fs::path(information.dli_fname).filename().string();
    if (information.dli_sname) {
        words += " (" + std::string(information.dli_sname) + ")";
    }
    return words;
}

RealTimeWatch::Count countOf(int times, const WatchEvent& first) {
    return {times, times > 0 ? std::string(first.function) + callerWords(first.caller) : ""};
}

} // namespace

fs::path RealTimeWatch::library() {
    std::error_code error;
    const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
    for (const fs::path& candidate : {folder / kLibrary, folder / "../lib/tvhost" / kLibrary}) {
        if (fs::exists(candidate, error)) {
            return candidate.lexically_normal();
        }
    }
    return {};
}

void RealTimeWatch::require(Subject subject) {
    if (subject == Subject::kCalls) {
        if (!stateOfThread()) {
            throw CheckSkipped(std::string(kLibrary) + " is not beside tvhost");
        }
        return;
    }
    struct sigaction action = {};
    action.sa_sigaction = caught;
    action.sa_flags = SA_SIGINFO;
    sigaction(SIGSYS, &action, nullptr);
    if (prctl(kSetSystemCallDispatch, kDispatchOn, 0, 0, &selector) != 0) {
        throw CheckSkipped("this kernel does not tell a program its system calls");
    }
}

void RealTimeWatch::begin(Subject subject) {
    caughtNumber = -1;
    if (subject == Subject::kSystemCalls) {
        selector = kBlock;
        return;
    }
    WatchState* const state = stateOfThread();
    *state = {};
    state->watching = 1;
}

RealTimeWatch::Counts RealTimeWatch::end() {
    selector = kAllow;
    WatchState seen{};
    if (WatchState* const state = stateOfThread()) {
        state->watching = 0;
        seen = *state;
    }
    Counts counts;
    counts.allocations = countOf(seen.allocations, seen.firstAllocation);
    counts.locks = countOf(seen.locks, seen.firstLock);
    if (caughtNumber >= 0) {
        counts.systemCalls.times = 1;
        counts.systemCalls.first =
            systemCallName(caughtNumber) + callerWords(reinterpret_cast<void*>(caughtAddress));
    }
    return counts;
}

RealTimeWatch::Pause::Pause() : watching_(0), blocking_(selector) {
    selector = kAllow;
    if (WatchState* const state = stateOfThread()) {
        watching_ = state->watching;
        state->watching = 0;
    }
}

RealTimeWatch::Pause::~Pause() {
    if (watching_ != 0) {
        stateOfThread()->watching = watching_;
    }
    selector = blocking_;
}

} // namespace tvhost
