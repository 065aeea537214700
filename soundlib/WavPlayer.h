// Plays a 16-bit WAV file through the two buffers of a `WavStreamReader` in turn.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>

#include "soundlib/WavHeaderWalker.h"
#include "soundlib/WavStreamReader.h"

class Wakeup;

// While one buffer plays the other is loaded. What the reader's flags and counters mean here:
//   startedFlag              the file is playing; false once its last frame has been rendered
//   streamFlagA/streamFlagB  firstBuffer/secondBuffer holds samples that aren't played yet
//   streamCounterA           position in the buffer that plays, in samples
//   streamCounterB           pieces played; odd while secondBuffer plays
//   streamCounterC           pieces loaded; odd when secondBuffer is next
//   streamCounterD           frames of silence because a piece came late
class WavPlayer {
public:
    // Where pieces are loaded. `kInRender` blocks `render` on the disk and never comes late: for
    // rendering to a file. `kOwnThread` keeps `render` free of the disk: for an audio thread.
    enum class Loading { kInRender, kOwnThread };

    WavPlayer();
    ~WavPlayer();
    WavPlayer(const WavPlayer&) = delete;
    WavPlayer& operator=(const WavPlayer&) = delete;

    // Opens the file at `path` and loads its first pieces, in place of the file before. On an
    // error the player is closed, as it is when the loading thread can't be had, which throws
    // std::system_error. Not while `render` runs.
    WavHeaderError open(const std::string& path, Loading loading);

    void close();

    // Writes `sampleFrames` frames to the two channels of `outputs`, full scale at 1. A mono file
    // goes to both, of more than two channels the first two are heard. Silence when closed, after
    // the end, and while a piece is late; then playing goes on where it stopped.
    void render(float* const* outputs, std::int32_t sampleFrames);

    bool isPlaying() const;

    // Of the open file.
    const WavFormat& format() const { return format_; }

    // The flags and counters told above.
    const WavStreamReader& reader() const { return *reader_; }

private:
    struct Piece {
        std::int32_t length; // samples
        bool last;
    };
    struct Release {
        void operator()(WavStreamReader* reader) const;
    };

    bool& flagOf(std::int32_t turn) const;
    Piece& pieceOf(std::int32_t turn) { return pieces_[turn & 1]; }
    void notePiece();
    bool loadNextIfFree();
    void loadOnOwnThread();
    bool frameIsReady();
    std::int32_t wholeFramesInBuffer();
    const std::int16_t* playedBuffer() const;
    void renderFromBuffer(float* left, float* right, std::int32_t frames);
    void renderAcrossBuffers(float& left, float& right);
    float takeSample();
    void leavePlayedBuffer();

    std::unique_ptr<WavStreamReader, Release> reader_;
    WavFileInfo info_{};
    WavFormat format_{};
    Loading loading_ = Loading::kInRender;
    std::array<Piece, 2> pieces_{};
    std::int64_t samplesToLoad_ = 0;
    std::thread loader_;
    std::unique_ptr<Wakeup> loaderTurn_; // null without a loader
    bool closing_ = false;
};
