#include "tests/effect/TrappedInput.h"

#include <sched.h>
#include <signal.h>
#include <sys/mman.h>
#include <unistd.h>

#include <atomic>
#include <new>
#include <thread>
#include <utility>

// Everything that the signal's handler needs, in place before the signal comes.
struct TrappedInput::Waiting {
    explicit Waiting(std::function<void()> work) : meanwhile(std::move(work)) {}

    char* memory = nullptr;
    std::size_t size = 0;
    std::function<void()> meanwhile;
    std::atomic<bool> reached{false};
    std::atomic<bool> passed{false};
    std::atomic<bool> abandoned{false};
    std::thread other;
    struct sigaction before = {};

    static Waiting* current;

    void run() {
        while (!reached) {
            if (abandoned) {
                return;
            }
            sched_yield();
        }
        meanwhile();
        passed = true;
    }

    static void onFault(int signal, siginfo_t* info, void*) {
        Waiting& waiting = *current;
        const char* const address = static_cast<const char*>(info->si_addr);
        if (waiting.reached || address < waiting.memory ||
            address >= waiting.memory + waiting.size) {
            sigaction(signal, &waiting.before, nullptr); // a real fault comes again
            return;
        }
        mprotect(waiting.memory, waiting.size, PROT_READ | PROT_WRITE);
        waiting.reached = true;
        while (!waiting.passed) {
            sched_yield();
        }
    }
};

TrappedInput::Waiting* TrappedInput::Waiting::current = nullptr;

TrappedInput::TrappedInput(std::size_t frames, std::size_t trapFrame,
                           std::function<void()> meanwhile)
    : waiting_(new Waiting(std::move(meanwhile))) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t before = trapFrame * sizeof(float);
    readable_ = (before + page - 1) / page * page;
    const std::size_t behind = (frames - trapFrame) * sizeof(float);
    size_ = readable_ + (behind + page - 1) / page * page;
    void* const memory =
        mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        throw std::bad_alloc();
    }
    memory_ = static_cast<char*>(memory);
    samples_ = reinterpret_cast<float*>(memory_ + readable_ - before);
}

void TrappedInput::arm() {
    waiting_->memory = memory_;
    waiting_->size = size_;
    Waiting::current = waiting_;
    waiting_->other = std::thread([this] { waiting_->run(); });
    struct sigaction action = {};
    action.sa_sigaction = Waiting::onFault;
    action.sa_flags = SA_SIGINFO;
    sigaction(SIGSEGV, &action, &waiting_->before);
    mprotect(memory_ + readable_, size_ - readable_, PROT_NONE);
}

bool TrappedInput::sprung() const {
    return waiting_->passed;
}

TrappedInput::~TrappedInput() {
    waiting_->abandoned = true;
    if (waiting_->other.joinable()) {
        waiting_->other.join();
        sigaction(SIGSEGV, &waiting_->before, nullptr);
    }
    delete waiting_;
    munmap(memory_, size_);
}
