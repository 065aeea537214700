// A client of JACK that sounds.
#pragma once

#include "tests/host/play/JackServer.h"

#include <atomic>
#include <cstdint>

struct _jack_client;
struct _jack_port;

// Two outputs of noise that never repeats itself soon: each sample tells its place.
class JackFeeder {
public:
    explicit JackFeeder(const JackServer& server);
    ~JackFeeder();
    JackFeeder(const JackFeeder&) = delete;
    JackFeeder& operator=(const JackFeeder&) = delete;

    // Leads both outputs into the first inputs of the client of this name, once it is there.
    // Answers whether it came within some seconds.
    bool connectTo(const char* client) const;

    // The sample at a place of its own count, 0 or more, between -0.5 and 0.5 and not 0.
    static float sampleAt(std::uint64_t place, int channel);

private:
    static int give(unsigned frames, void* self);

    _jack_client* client_ = nullptr;
    _jack_port* ports_[2] = {};
    std::uint64_t place_ = 0;
};
