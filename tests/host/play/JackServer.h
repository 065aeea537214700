// A JACK server without a sound card.
#pragma once

#include "tests/support/Process.h"

#include <string>

struct _jack_client;

// Runs for as long as the object; other programs find it by environment(). Throws
// std::runtime_error when it doesn't start.
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
    std::string name_;
    Process process_;
};
