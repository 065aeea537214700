// The host's side of what an effect asks.
#pragma once

#include "plugin/vst2/AEffect.h"
#include "plugin/vst2/Records.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <thread>
#include <utility>

namespace tvhost {

// The host's side of what one effect asks. An effect is bound to its HostCallback through the
// record's `user` field; calls that come while the record is being made reach the object that is
// under construction on the same thread. A call that belongs to none gets the answers that need no
// effect (version, vendor, product, abilities) and 0 for the rest.
class HostCallback {
public:
    // What is given to VSTPluginMain. Any thread.
    static VstIntPtr entry(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                           void* ptr, float opt);

    // `folder` is what a plug-in that asks for its directory is told.
    explicit HostCallback(std::string folder);
    ~HostCallback();
    HostCallback(const HostCallback&) = delete;
    HostCallback& operator=(const HostCallback&) = delete;

    // Ends the construction: from now on calls are told apart by the record.
    void bind(AEffect& effect);

    void setSampleRate(double hertz) { sampleRate_ = hertz; }
    void setBlockSize(int frames) { blockSize_ = frames; }

    // Position on the time line of the next frame to be processed, in frames.
    void setPosition(std::int64_t frame) { position_ = frame; }

    // Whether the time line moves as the effect processes.
    void setPlaying(bool state) { playing_ = state; }

    // Whether the effect has said since the last call that its channels or its latency changed. Any
    // thread.
    bool takeIoChange() { return ioChanged_.exchange(false); }

    void setTempo(double beatsPerMinute) { beatsPerMinute_ = beatsPerMinute; }
    // Whether sound is wanted as fast as it is played; offline without.
    void setRealTime(bool state) { realTime_ = state; }

    // Whether the effect is inside its process call.
    // On the calling thread.
    void setProcessing(bool state) {
        processing_ = state ? std::this_thread::get_id() : std::thread::id();
    }

    // Given what an effect asks its editor's window to become, in pixels; answers whether it did.
    using SizeRequestHandler = std::function<bool(int width, int height)>;
    // Without one, and with null, no such wish is granted.
    void setSizeRequestHandler(SizeRequestHandler handler) { sizeRequest_ = std::move(handler); }

private:
    VstIntPtr answer(const AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value);
    VstIntPtr timeInfo() const;

    std::string folder_;
    double sampleRate_ = 44100.0;
    int blockSize_ = 512;
    // The effect may ask on one thread while another processes.
    std::atomic<std::int64_t> position_{0};
    std::atomic<std::thread::id> processing_{};
    double beatsPerMinute_ = 120.0;
    bool realTime_ = false;
    std::atomic<bool> playing_{true};
    std::atomic<bool> ioChanged_{false};
    SizeRequestHandler sizeRequest_;
};

} // namespace tvhost
