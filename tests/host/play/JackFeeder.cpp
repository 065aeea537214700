#include "tests/host/play/JackFeeder.h"

#include <jack/jack.h>

#include <stdexcept>

#include <unistd.h>

JackFeeder::JackFeeder(const JackServer& server) : client_(server.openClient("feeder")) {
    if (!client_) {
        throw std::runtime_error("no client of JACK");
    }
    for (int c = 0; c < 2; ++c) {
        ports_[c] = jack_port_register(client_, c == 0 ? "left" : "right", JACK_DEFAULT_AUDIO_TYPE,
                                       JackPortIsOutput, 0);
    }
    jack_set_process_callback(client_, give, this);
    jack_activate(client_);
}

JackFeeder::~JackFeeder() {
    jack_client_close(client_);
}

float JackFeeder::sampleAt(std::uint64_t place, int channel) {
    // All odd numbers of 20 bits, each once before the first comes again.
    const auto mixed = static_cast<std::int32_t>((place * 2 + static_cast<std::uint64_t>(channel)) *
                                                 365437 % 524288);
    return static_cast<float>(2 * mixed + 1 - 524288) / 1048576.0f;
}

int JackFeeder::give(unsigned frames, void* self) {
    JackFeeder& feeder = *static_cast<JackFeeder*>(self);
    for (int c = 0; c < 2; ++c) {
        auto* const samples = static_cast<float*>(jack_port_get_buffer(feeder.ports_[c], frames));
        for (unsigned i = 0; i < frames; ++i) {
            samples[i] = sampleAt(feeder.place_ + i, c);
        }
    }
    feeder.place_ += frames;
    return 0;
}

bool JackFeeder::connectTo(const char* client) const {
    for (int attempt = 0; attempt < 500; ++attempt) {
        const char** const inputs =
            jack_get_ports(client_, client, JACK_DEFAULT_AUDIO_TYPE, JackPortIsInput);
        const bool there = inputs && inputs[0] && inputs[1];
        const bool done = there &&
                          jack_connect(client_, jack_port_name(ports_[0]), inputs[0]) == 0 &&
                          jack_connect(client_, jack_port_name(ports_[1]), inputs[1]) == 0;
        jack_free(inputs);
        if (done) {
            return true;
        }
        usleep(20000);
    }
    return false;
}
