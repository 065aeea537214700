// An effect between a sound and a sound card.
#pragma once

#include "host/play/AudioServer.h"
#include "host/play/SoundFeed.h"
#include "host/plugin/EffectInstance.h"
#include "host/render/ChannelPlan.h"

#include <atomic>
#include <cstdint>
#include <vector>

namespace tvhost {

// Runs the effect block by block. process() is for the sound server's thread and allocates nothing
// and waits for nobody; the rest is for the thread that owns the object.
class Player {
public:
    // What went wrong and how loud it was, since the beginning.
    struct Report {
        std::int64_t frames = 0;     // that went to the card
        std::int64_t underruns = 0;  // blocks before which the card had nothing to play
        std::int64_t overruns = 0;   // blocks before which live sound was lost
        std::int64_t late = 0;       // blocks that took longer than they last
        std::int64_t unfed = 0;      // blocks for which the file had not been read yet
        std::int64_t notNumbers = 0; // samples that were no finite numbers and were silenced
        float peak = 0.0f;
    };

    // `effect` must be started at `sampleRate` for blocks of `blockSize` frames. Without `feed`
    // the effect hears `liveChannels` channels of live sound, 1 or more. Echoes up to `longestGap`
    // seconds apart are waited for. All must outlive the object.
    Player(EffectInstance& effect, SoundFeed* feed, int liveChannels, int sampleRate, int blockSize,
           double longestGap);

    // Which channel goes where, as in a render.
    const ChannelPlan& plan() const { return plan_; }

    // Answers false with the last block: the sound and its echoes have ended, or stop() was called.
    bool process(const AudioServer::Block& block);

    // Lets the sound fade out in the next block and end.
    void stop() { stopping_ = true; }

    // Whether process() has answered false.
    bool hasFinished() const { return finished_; }

    // Frames of the feed that have been played.
    std::int64_t position() const { return position_; }
    // The highest level of each output since the last call.
    std::vector<float> takeLevels();
    Report report() const;

private:
    void fillInputs(const AudioServer::Block& block, int offset, int frames);
    float cleanOutputs(int frames);
    void silenceOutputs(int frames);
    void giveOutputs(const AudioServer::Block& block, int offset, int frames) const;
    static void fadeOut(const AudioServer::Block& block);
    bool hasEnded(int frames, float loudest);

    EffectInstance& effect_;
    SoundFeed* feed_;
    int sampleRate_;
    int blockSize_;
    int channels_; // of what is played
    ChannelPlan plan_;
    std::vector<float> fed_; // interleaved
    std::vector<std::vector<float>> inputs_;
    std::vector<std::vector<float>> outputs_;
    std::vector<float*> inputPointers_;
    std::vector<float*> outputPointers_;
    std::int64_t gapFrames_;
    std::int64_t quietFrames_ = 0;
    std::int64_t tailFrames_ = 0;

    std::atomic<bool> stopping_{false};
    std::atomic<bool> finished_{false};
    std::atomic<std::int64_t> position_{0};
    std::atomic<std::int64_t> frames_{0};
    std::atomic<std::int64_t> underruns_{0};
    std::atomic<std::int64_t> overruns_{0};
    std::atomic<std::int64_t> late_{0};
    std::atomic<std::int64_t> unfed_{0};
    std::atomic<std::int64_t> notNumbers_{0};
    std::atomic<float> peak_{0.0f};
    std::vector<std::atomic<float>> levels_;
};

} // namespace tvhost
