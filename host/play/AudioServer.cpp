#include "host/play/AudioServer.h"

#include "host/base/PlainText.h"
#include "host/base/QuietErrors.h"
#include "host/base/TextTable.h"
#include "host/base/UserError.h"

#include <RtAudio.h>

#include <algorithm>
#include <optional>
#include <utility>

// The library's sixth version answers what its fifth throws, and gives devices names of their own
// where they had places in a row.
#if defined(RTAUDIO_VERSION_MAJOR)
#define TVHOST_RTAUDIO_ANSWERS 1
#else
#define TVHOST_RTAUDIO_ANSWERS 0
#endif

namespace tvhost {

namespace {

struct Server {
    RtAudio::Api api;
    const char* name; // as the user writes it
    const char* title;
};

// PipeWire is reached by any of them, as whatever it stands in for.
constexpr Server kServers[] = {{RtAudio::UNIX_JACK, "jack", "JACK"},
                               {RtAudio::LINUX_PULSE, "pulse", "PulseAudio"},
                               {RtAudio::LINUX_ALSA, "alsa", "ALSA"}};

constexpr const char* kClientName = "tvhost";

struct Device {
    unsigned id;
    RtAudio::DeviceInfo info;
};

std::unique_ptr<RtAudio> reach(const Server& server) {
    auto audio = std::make_unique<RtAudio>(server.api);
    audio->showWarnings(false);
    return audio;
}

std::vector<Device> devicesOf(RtAudio& audio) {
    // ALSA's library complains on standard error about what isn't there.
    const QuietErrors quiet;
    std::vector<Device> devices;
#if TVHOST_RTAUDIO_ANSWERS
    for (const unsigned id : audio.getDeviceIds()) {
        devices.push_back({id, audio.getDeviceInfo(id)});
    }
#else
    const unsigned count = audio.getDeviceCount();
    for (unsigned id = 0; id < count; ++id) {
        try {
            const RtAudio::DeviceInfo info = audio.getDeviceInfo(id);
            if (info.probed) {
                devices.push_back({id, info});
            }
        } catch (const RtAudioError&) {
            continue; // what cannot be asked cannot be played on either
        }
    }
#endif
    return devices;
}

// Runs a call of the library that may fail, and answers what it had against it.
template <typename Call>
std::optional<std::string> faultOf(RtAudio& audio, const Call& call) {
#if TVHOST_RTAUDIO_ANSWERS
    if (call() != RTAUDIO_NO_ERROR) {
        return plainText(audio.getErrorText());
    }
#else
    static_cast<void>(audio);
    try {
        call();
    } catch (const RtAudioError& error) {
        return plainText(error.getMessage());
    }
#endif
    return std::nullopt;
}

std::string serverNames() {
    std::string names;
    for (const Server& server : kServers) {
        names += (names.empty() ? "" : ", ") + std::string(server.name);
    }
    return names;
}

bool isWanted(const Device& device, const std::string& wanted) {
    return equalWithoutCase(plainText(device.info.name), plainText(wanted));
}

unsigned channelsOf(const Device& device, bool input) {
    return input ? device.info.inputChannels : device.info.outputChannels;
}

// The device that `wanted` means among those with channels in this direction; none when there is
// none at all.
std::optional<Device> choose(const std::vector<Device>& devices, const std::string& wanted,
                             bool input) {
    std::vector<Device> usable;
    for (const Device& device : devices) {
        if (channelsOf(device, input) > 0) {
            usable.push_back(device);
        }
    }
    if (wanted.empty()) {
        for (const Device& device : usable) {
            if (input ? device.info.isDefaultInput : device.info.isDefaultOutput) {
                return device;
            }
        }
        return usable.empty() ? std::nullopt : std::optional(usable.front());
    }
    for (const Device& device : usable) {
        if (isWanted(device, wanted)) {
            return device;
        }
    }
    return std::nullopt;
}

} // namespace

class AudioServer::Stream {
public:
    explicit Stream(const StreamWish& wish) {
        for (const Server& server : kServers) {
            if (!wish.server.empty() && wish.server != server.name) {
                continue;
            }
            audio_ = reach(server);
            server_ = &server;
            if (take(wish)) {
                open(wish);
                return;
            }
        }
        throw UserError(missing(wish));
    }

    const Server& server() const { return *server_; }
    const Device& device() const { return output_; }
    int sampleRate() const { return sampleRate_; }
    int blockSize() const { return static_cast<int>(blockSize_); }
    int outputs() const { return static_cast<int>(outputPointers_.size()); }
    int inputs() const { return static_cast<int>(inputPointers_.size()); }

    void start(Process process) {
        process_ = std::move(process);
        if (const auto fault = faultOf(*audio_, [&] { return audio_->startStream(); })) {
            throw UserError(std::string(server_->title) + " cannot start: " + *fault +
                            "; give another --device or --server");
        }
    }
    bool isRunning() const { return audio_->isStreamRunning(); }
    void stop() {
        if (audio_->isStreamRunning()) {
            static_cast<void>(faultOf(*audio_, [&] { return audio_->abortStream(); }));
        }
    }

private:
    // Whether the server runs and has what is wished.
    bool take(const StreamWish& wish) {
        const std::vector<Device> devices = devicesOf(*audio_);
        const auto output = choose(devices, wish.device, false);
        if (!output) {
            return false;
        }
        output_ = *output;
        if (wish.inputs > 0) {
            const auto input = choose(devices, "", true);
            if (!input) {
                return false;
            }
            input_ = *input;
        }
        return true;
    }

    static std::string missing(const StreamWish& wish) {
        std::string text = "there is no sound server";
        if (!wish.server.empty()) {
            text += " " + wish.server;
        }
        text += wish.inputs > 0 ? " with sound in and out" : "";
        if (!wish.device.empty()) {
            text += " with a device \"" + wish.device + "\"";
        }
        return text + "; start PipeWire, PulseAudio or JACK, or see 'tvhost play --devices' (" +
               serverNames() + ")";
    }

    int rateFor(const StreamWish& wish) const {
        const std::vector<unsigned>& rates = output_.info.sampleRates;
        const auto can = [&](int rate) {
            return std::find(rates.begin(), rates.end(), static_cast<unsigned>(rate)) !=
                   rates.end();
        };
        if (wish.sampleRate != 0) {
            return wish.sampleRate;
        }
        return can(wish.likedRate) || output_.info.preferredSampleRate == 0
                   ? wish.likedRate
                   : static_cast<int>(output_.info.preferredSampleRate);
    }

    void open(const StreamWish& wish) {
        const auto channels = [](int wished, unsigned there) {
            return std::min(static_cast<unsigned>(wished), there);
        };
        RtAudio::StreamParameters output;
        output.deviceId = output_.id;
        output.nChannels = channels(wish.outputs, output_.info.outputChannels);
        RtAudio::StreamParameters input;
        if (wish.inputs > 0) {
            input.deviceId = input_.id;
            input.nChannels = channels(wish.inputs, input_.info.inputChannels);
        }
        RtAudio::StreamOptions options;
        // With PulseAudio the library would say so on standard error.
        options.flags = RTAUDIO_NONINTERLEAVED;
        if (server_->api != RtAudio::LINUX_PULSE) {
            options.flags |= RTAUDIO_SCHEDULE_REALTIME;
        }
        options.streamName = kClientName;
        const QuietErrors quiet;
        sampleRate_ = rateFor(wish);
        blockSize_ = static_cast<unsigned>(wish.blockSize);
        if (const auto fault = faultOf(*audio_, [&] {
                return audio_->openStream(&output, wish.inputs > 0 ? &input : nullptr,
                                          RTAUDIO_FLOAT32, static_cast<unsigned>(sampleRate_),
                                          &blockSize_, callBack, this, &options);
            })) {
            throw UserError(plainText(output_.info.name) + " of " + server_->title +
                            " cannot be opened at " + std::to_string(sampleRate_) +
                            " Hz: " + *fault + "; give another --device, --server or --rate");
        }
        outputPointers_.resize(output.nChannels);
        inputPointers_.resize(wish.inputs > 0 ? input.nChannels : 0);
    }

    static int callBack(void* output, void* input, unsigned frames, double,
                        RtAudioStreamStatus status, void* data) {
        return static_cast<Stream*>(data)->run(static_cast<float*>(output),
                                               static_cast<const float*>(input), frames, status);
    }
    int run(float* output, const float* input, unsigned frames, RtAudioStreamStatus status) {
        for (std::size_t c = 0; c < outputPointers_.size(); ++c) {
            outputPointers_[c] = output + c * frames;
        }
        for (std::size_t c = 0; c < inputPointers_.size(); ++c) {
            inputPointers_[c] = input + c * frames;
        }
        const Block block{inputPointers_.data(),
                          outputPointers_.data(),
                          inputs(),
                          outputs(),
                          static_cast<int>(frames),
                          (status & RTAUDIO_OUTPUT_UNDERFLOW) != 0,
                          (status & RTAUDIO_INPUT_OVERFLOW) != 0};
        return process_(block) ? 0 : 1;
    }

    const Server* server_ = nullptr;
    Device output_{};
    Device input_{};
    int sampleRate_ = 0;
    unsigned blockSize_ = 0;
    std::vector<float*> outputPointers_;
    std::vector<const float*> inputPointers_;
    Process process_;
    // Last, so that no call comes when the rest has gone.
    std::unique_ptr<RtAudio> audio_;
};

AudioServer::AudioServer(const StreamWish& wish) {
    const bool known = wish.server.empty() || std::any_of(std::begin(kServers), std::end(kServers),
                                                          [&](const Server& server) {
                                                              return wish.server == server.name;
                                                          });
    if (!known) {
        throw UserError("--server " + wish.server + ": give one of " + serverNames());
    }
    stream_ = std::make_unique<Stream>(wish);
}

AudioServer::~AudioServer() {
    stop();
}

std::string AudioServer::serverName() const {
    return stream_->server().title;
}

std::string AudioServer::deviceName() const {
    return plainText(stream_->device().info.name);
}

int AudioServer::sampleRate() const {
    return stream_->sampleRate();
}

int AudioServer::blockSize() const {
    return stream_->blockSize();
}

int AudioServer::outputs() const {
    return stream_->outputs();
}

int AudioServer::inputs() const {
    return stream_->inputs();
}

void AudioServer::start(Process process) {
    stream_->start(std::move(process));
}

bool AudioServer::isRunning() const {
    return stream_->isRunning();
}

void AudioServer::stop() {
    stream_->stop();
}

std::string AudioServer::listing() {
    TextTable table({false, true, true, false});
    bool any = false;
    table.add({"server", "in", "out", "device"});
    for (const Server& server : kServers) {
        const std::unique_ptr<RtAudio> audio = reach(server);
        for (const Device& device : devicesOf(*audio)) {
            table.add({server.name, std::to_string(device.info.inputChannels),
                       std::to_string(device.info.outputChannels), plainText(device.info.name)});
            any = true;
        }
    }
    return any ? table.text() : "";
}

} // namespace tvhost
