// Keeps what a host does at broken pipes while the plug-in is loaded.
//
// Foundation's library (GNUstep's from 1.31 on) has the whole process ignore them as soon as it is
// loaded, ahead of all constructors here. Ahead of all constructors anywhere, the loader asks for
// the addresses of indirect functions: whoever gives one can look what the host has set.
#include <csignal>

#include <sys/syscall.h>

namespace {

// As the kernel keeps it. The C library can't be called yet when it is read.
struct KernelAction {
    void (*handler)(int);
    unsigned long flags;
    void (*restorer)();
    unsigned long mask;
};

KernelAction ofHost;

[[gnu::always_inline]] inline void exchange(const KernelAction* set, KernelAction* get) {
    long result = SYS_rt_sigaction;
    register unsigned long maskSize __asm__("r10") = sizeof(get->mask);
    __asm__ volatile("syscall"
                     : "+a"(result)
                     : "D"(SIGPIPE), "S"(set), "d"(get), "r"(maskSize)
                     : "rcx", "r11", "memory");
}

void nothing() {}

} // namespace

extern "C" {

using Function = void();

// Nothing of a sanitizer is ready either.
[[gnu::used, gnu::visibility("hidden"), gnu::no_stack_protector,
  clang::no_sanitize("address", "undefined", "coverage")]] Function*
tvdelayLookAtSignals() {
    exchange(nullptr, &ofHost);
    return nothing;
}

[[gnu::visibility("hidden")]] void tvdelayBeforeLoading()
    __attribute__((ifunc("tvdelayLookAtSignals")));
}

namespace {

[[gnu::constructor]] void giveBack() {
    tvdelayBeforeLoading(); // or nobody asks for its address
    KernelAction now{};
    exchange(nullptr, &now);
    if (now.handler != ofHost.handler) {
        exchange(&ofHost, nullptr);
    }
}

} // namespace
