// A polite request to stop, by Ctrl-C or kill, noted for a program that ends in its own time.
#pragma once

#include <csignal>

namespace tvhost {

// While it lives, the signals that ask a program to stop (SIGINT, SIGTERM, SIGHUP) are only noted,
// so that it can end in good order. The second of a kind ends the program as before. One at a time.
class StopRequest {
public:
    StopRequest();
    ~StopRequest();
    StopRequest(const StopRequest&) = delete;
    StopRequest& operator=(const StopRequest&) = delete;

    bool made() const;

private:
    static constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

    struct sigaction before_[sizeof kSignals / sizeof *kSignals];
};

} // namespace tvhost
