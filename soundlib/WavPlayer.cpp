#include "soundlib/WavPlayer.h"

#include <algorithm>
#include <limits>

#include "soundlib/LiveField.h"
#include "soundlib/Wakeup.h"
#include "soundlib/WavStreamReaderMaker.h"

// Fills run in the foreground of whichever thread loads: a background fill doesn't tell when it is
// done, since `filling` is false before it begins and after it has ended. The stream flags are
// published after a fill and after the last read of a buffer, which is all the threads need.

namespace {

constexpr float kPerStep = 1.0f / 32768.0f;

} // namespace

void WavPlayer::Release::operator()(WavStreamReader* reader) const {
    destroyWavStreamReader(reader);
}

WavPlayer::WavPlayer() : reader_(makeWavStreamReader()) {}

WavPlayer::~WavPlayer() {
    close();
}

WavHeaderError WavPlayer::open(const std::string& path, Loading loading) {
    close();
    const WavHeaderError error = walkWavHeader(path, info_, format_);
    if (error != WavHeaderError::kNone) {
        return error;
    }
    loading_ = loading;
    samplesToLoad_ = format_.frames * format_.channels;
    reader_->start(&info_, false);
    notePiece();
    loadNextIfFree();
    if (loading_ == Loading::kOwnThread && samplesToLoad_ > 0) {
        try {
            loaderTurn_ = std::make_unique<Wakeup>();
            loader_ = std::thread(&WavPlayer::loadOnOwnThread, this);
        } catch (...) {
            close();
            throw;
        }
    }
    return WavHeaderError::kNone;
}

void WavPlayer::close() {
    if (loader_.joinable()) {
        publish(closing_, true);
        loaderTurn_->wake();
        loader_.join();
        closing_ = false;
    }
    loaderTurn_.reset();
    reader_->startedFlag = false;
    reader_->stream.close();
}

void WavPlayer::render(float* const* outputs, std::int32_t sampleFrames) {
    float* left = outputs[0];
    float* right = outputs[1];
    std::int32_t frame = 0;
    while (frame < sampleFrames && frameIsReady()) {
        const std::int32_t whole = std::min(wholeFramesInBuffer(), sampleFrames - frame);
        if (whole > 0) {
            renderFromBuffer(left + frame, right + frame, whole);
            frame += whole;
        } else {
            renderAcrossBuffers(left[frame], right[frame]);
            ++frame;
        }
    }
    if (frame < sampleFrames) {
        std::fill(left + frame, left + sampleFrames, 0.0f);
        std::fill(right + frame, right + sampleFrames, 0.0f);
        if (reader_->startedFlag) {
            const std::int32_t room =
                std::numeric_limits<std::int32_t>::max() - reader_->streamCounterD;
            reader_->streamCounterD += std::min(room, sampleFrames - frame);
        }
    }
}

bool WavPlayer::isPlaying() const {
    return acquire(reader_->startedFlag);
}

bool& WavPlayer::flagOf(std::int32_t turn) const {
    return (turn & 1) == 0 ? reader_->streamFlagA : reader_->streamFlagB;
}

// Hands over the piece that has just been read.
void WavPlayer::notePiece() {
    const std::int64_t read = std::min<std::int64_t>(reader_->stream.gcount() / 2, samplesToLoad_);
    // A file that has been cut since it was opened ends here.
    samplesToLoad_ = read < wavReadLength ? 0 : samplesToLoad_ - read;
    const std::int32_t turn = reader_->streamCounterC++;
    pieceOf(turn) = {static_cast<std::int32_t>(read), samplesToLoad_ == 0};
    publish(flagOf(turn), true);
}

bool WavPlayer::loadNextIfFree() {
    if (samplesToLoad_ == 0 || acquire(flagOf(reader_->streamCounterC))) {
        return false;
    }
    if ((reader_->streamCounterC & 1) == 0) {
        reader_->fillFirstBuffer(false);
    } else {
        reader_->fillSecondBuffer(false);
    }
    notePiece();
    return true;
}

void WavPlayer::loadOnOwnThread() {
    while (!acquire(closing_) && samplesToLoad_ > 0) {
        if (!loadNextIfFree()) {
            loaderTurn_->wait();
        }
    }
}

// Whether every channel of the next frame is loaded. Ends the playing after the last whole frame.
bool WavPlayer::frameIsReady() {
    if (!reader_->startedFlag) {
        return false;
    }
    const std::int32_t turn = reader_->streamCounterB;
    if (!acquire(flagOf(turn))) {
        return false;
    }
    const Piece& piece = pieceOf(turn);
    std::int32_t ready = piece.length - reader_->streamCounterA;
    bool atEnd = piece.last;
    if (ready < format_.channels && !atEnd) {
        if (!acquire(flagOf(turn + 1))) {
            return false;
        }
        ready += pieceOf(turn + 1).length;
        atEnd = pieceOf(turn + 1).last;
    }
    if (ready < format_.channels && atEnd) {
        publish(reader_->startedFlag, false);
        return false;
    }
    return true;
}

std::int32_t WavPlayer::wholeFramesInBuffer() {
    const Piece& piece = pieceOf(reader_->streamCounterB);
    return (piece.length - reader_->streamCounterA) / format_.channels;
}

const std::int16_t* WavPlayer::playedBuffer() const {
    return (reader_->streamCounterB & 1) == 0 ? reader_->firstBuffer : reader_->secondBuffer;
}

void WavPlayer::renderFromBuffer(float* left, float* right, std::int32_t frames) {
    const std::int32_t channels = format_.channels;
    const std::int32_t second = channels > 1 ? 1 : 0;
    const std::int16_t* samples = playedBuffer() + reader_->streamCounterA;
    for (std::int32_t frame = 0; frame < frames; ++frame) {
        left[frame] = static_cast<float>(samples[0]) * kPerStep;
        right[frame] = static_cast<float>(samples[second]) * kPerStep;
        samples += channels;
    }
    reader_->streamCounterA += frames * channels;
}

// One frame that begins with the last samples of a buffer, or with the first of the next.
void WavPlayer::renderAcrossBuffers(float& left, float& right) {
    left = takeSample();
    right = format_.channels > 1 ? takeSample() : left;
    for (std::int32_t channel = 2; channel < format_.channels; ++channel) {
        takeSample();
    }
}

float WavPlayer::takeSample() {
    if (reader_->streamCounterA == pieceOf(reader_->streamCounterB).length) {
        leavePlayedBuffer();
    }
    return static_cast<float>(playedBuffer()[reader_->streamCounterA++]) * kPerStep;
}

void WavPlayer::leavePlayedBuffer() {
    publish(flagOf(reader_->streamCounterB), false);
    ++reader_->streamCounterB;
    reader_->streamCounterA = 0;
    if (loading_ == Loading::kInRender) {
        loadNextIfFree();
    } else if (loaderTurn_) {
        loaderTurn_->wake();
    }
}
