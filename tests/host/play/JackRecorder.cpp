#include "tests/host/play/JackRecorder.h"

#include <jack/jack.h>

#include <algorithm>
#include <stdexcept>

namespace {

// A minute of two channels: no memory is asked for while it records.
constexpr std::size_t kRoom = std::size_t{60} * 48000 * 2;

} // namespace

JackRecorder::JackRecorder(const JackServer& server)
    : client_(server.openClient(kName)), kept_(kRoom) {
    if (!client_) {
        throw std::runtime_error("no client of JACK");
    }
    for (int c = 0; c < 2; ++c) {
        ports_[c] = jack_port_register(client_, c == 0 ? "left" : "right", JACK_DEFAULT_AUDIO_TYPE,
                                       JackPortIsInput, 0);
    }
    jack_set_process_callback(client_, take, this);
    jack_activate(client_);
}

JackRecorder::~JackRecorder() {
    jack_client_close(client_);
}

int JackRecorder::take(unsigned frames, void* self) {
    JackRecorder& recorder = *static_cast<JackRecorder*>(self);
    std::size_t count = recorder.count_;
    const auto* const left = static_cast<float*>(jack_port_get_buffer(recorder.ports_[0], frames));
    const auto* const right = static_cast<float*>(jack_port_get_buffer(recorder.ports_[1], frames));
    for (unsigned i = 0; i < frames && count + 2 <= recorder.kept_.size(); ++i) {
        // What comes before the sound is not worth the room.
        if (count == 0 && left[i] == 0.0f && right[i] == 0.0f) {
            continue;
        }
        recorder.kept_[count++] = left[i];
        recorder.kept_[count++] = right[i];
    }
    recorder.count_ = count;
    return 0;
}

std::vector<float> JackRecorder::sound() const {
    return {kept_.begin(), kept_.begin() + static_cast<std::ptrdiff_t>(count_.load())};
}
