// Streams the sample data of a 16-bit WAV file into two buffers that take turns.
#pragma once

#include <cstdint>
#include <fstream>

#include <pthread.h>

#include "soundlib/WavFileInfo.h"

// Samples in one fill, two bytes each. One value for all readers.
inline constexpr std::int32_t wavReadLength = 32768;

// Plain record. Whoever makes one supplies the two buffers and `threadAttributes`
// (WavStreamReaderMaker.h does it), and gives the flags and counters a meaning; the reader only
// resets them.
//
// The file is one sequence: each fill delivers the next piece, into whichever buffer it is for.
// Bytes arrive as they stand in the file. No failure is reported: a file that can't be opened or
// ends inside a fill leaves the rest of the buffer as it was and `stream` in its fail state, and
// fills deliver nothing until `start` runs again.
//
// A fill with `background` false runs in the calling thread and blocks on the disk; with true it
// returns at once, having allocated, and runs on a thread of its own. One fill at a time: there is
// no lock, and `filling` is false also between the request and the start of its thread.
struct WavStreamReader {
    bool startedFlag;
    bool streamFlagA;
    bool streamFlagB;
    WavFileInfo* info; // not owned; outlives the reading
    std::int32_t streamCounterA;
    std::int32_t streamCounterB;
    std::int32_t streamCounterC;
    std::int16_t* firstBuffer; // wavReadLength samples at least, as is secondBuffer
    std::int16_t* secondBuffer;
    std::int32_t streamCounterD;
    std::ifstream stream;
    bool reopenPending; // the next fill of the first buffer opens the file
    bool filling;
    pthread_t firstThread; // the latest of its kind; never joined or detached here
    pthread_t secondThread;
    pthread_attr_t threadAttributes;

    // Binds the reader to `newInfo`, resets flags and counters and fills the first buffer from
    // `dataOffset` on. May be called again, with the same file or another.
    void start(WavFileInfo* newInfo, const bool& background);

    void fillFirstBuffer(const bool& background);

    // Never opens the file: before the first buffer's fill it reads on in the file before.
    void fillSecondBuffer(const bool& background);
};
