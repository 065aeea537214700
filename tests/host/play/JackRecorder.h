// A client of JACK that records.
#pragma once

#include "tests/host/play/JackServer.h"

#include <atomic>
#include <vector>

struct _jack_client;
struct _jack_port;

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
