// The sound card, by way of the sound server that runs on this machine.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tvhost {

// What a stream is to be. Names come from the user.
struct StreamWish {
    std::string server; // "jack", "pulse" or "alsa"; empty takes the first that runs, in this order
    std::string device; // by name, capitals do not matter; empty takes the default one
    int sampleRate = 0; // Hz; 0 takes `likedRate` where the device can, else the device's own
    int likedRate = 44100;
    int blockSize = 512; // frames; servers with a size of their own keep it
    int outputs = 2;     // channels, at most; 1 or more
    int inputs = 0;      // of live sound, at most; 0 for none
};

// One open stream of sound, stopped and closed with the object. All calls from one thread; the
// server calls back on another.
class AudioServer {
public:
    struct Block {
        const float* const* inputs; // one pointer a channel
        float* const* outputs;
        int inputCount;
        int outputCount;
        int frames;
        bool underrun; // sound for the card came too late, before this block
        bool overrun;  // live sound was lost, before this block
    };
    // Fills the outputs and answers whether more is to come; what it filled is still played. On the
    // server's thread, which must not wait.
    using Process = std::function<bool(const Block&)>;

    // Opens a stream that stands still. Throws UserError when there is no such server or device or
    // it cannot be had.
    explicit AudioServer(const StreamWish& wish);
    ~AudioServer();
    AudioServer(const AudioServer&) = delete;
    AudioServer& operator=(const AudioServer&) = delete;

    std::string serverName() const;
    std::string deviceName() const;
    int sampleRate() const; // Hz
    int blockSize() const;  // frames
    int outputs() const;    // channels
    int inputs() const;

    // Throws UserError when the server declines.
    void start(Process process);
    // Whether sound runs: from start() until the process had no more or the server has gone.
    bool isRunning() const;
    // Ends at once, whatever is still to be played.
    void stop();

    // One line for each device of each server that runs, for reading.
    static std::string listing();

private:
    class Stream;
    std::unique_ptr<Stream> stream_;
};

} // namespace tvhost
