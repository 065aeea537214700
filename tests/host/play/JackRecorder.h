// A JACK server without a sound card, and a client of it that records.
#pragma once

#include "tests/support/Process.h"

#include <atomic>
#include <string>
#include <vector>

struct _jack_client;
struct _jack_port;

// Runs for as long as the object; other programs find it by environment(). Throws
// std::runtime_error when it doesn't start.
class JackServer {
public:
    explicit JackServer(int sampleRate);
    ~JackServer();
    JackServer(const JackServer&) = delete;
    JackServer& operator=(const JackServer&) = delete;

    std::string environment() const { return "JACK_DEFAULT_SERVER=" + name_; }
    const std::string& name() const { return name_; }

private:
    std::string name_;
    Process process_;
};

// Two inputs, all of whose sound is kept. Clients see it as the device kName.
class JackRecorder {
public:
    static constexpr const char* kName = "recorder";

    explicit JackRecorder(const JackServer& server);
    ~JackRecorder();
    JackRecorder(const JackRecorder&) = delete;
    JackRecorder& operator=(const JackRecorder&) = delete;

    // What has come so far, from the first sample that is not silence, interleaved.
    std::vector<float> sound() const;

private:
    static int take(unsigned frames, void* self);

    _jack_client* client_ = nullptr;
    _jack_port* ports_[2] = {};
    std::vector<float> kept_;
    std::atomic<std::size_t> count_{0};
};
