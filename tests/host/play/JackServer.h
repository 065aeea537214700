// A JACK server without a sound card.
#pragma once

#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <memory>
#include <string>

struct _jack_client;

// Runs for as long as the object; other programs find it by environment(). Throws
// std::runtime_error with what it said when it doesn't start.
class JackServer {
public:
    enum class Patience {
        kLong, // waits for every client, so that no sound is left out when the machine is busy
        kNone  // goes on without those that are late, and tells them so
    };

    explicit JackServer(int sampleRate, Patience patience = Patience::kLong);
    ~JackServer();
    JackServer(const JackServer&) = delete;
    JackServer& operator=(const JackServer&) = delete;

    std::string environment() const { return "JACK_DEFAULT_SERVER=" + name_; }
    const std::string& name() const { return name_; }

    // Null when it cannot be had; the caller closes it.
    _jack_client* openClient(const char* name) const;

private:
    // Whether clients can join it, waiting up to 10 s; false at once when it has ended.
    bool answers();

    TemporaryFolder folder_;
    std::string name_;
    std::unique_ptr<Process> process_;
};
