#include "soundlib/WavStreamReader.h"

#include <dispatch/dispatch.h>

#include "soundlib/LiveField.h"

namespace {

void readPiece(WavStreamReader* reader, std::int16_t* buffer) {
    reader->stream.read(reinterpret_cast<char*>(buffer),
                        static_cast<std::streamsize>(wavReadLength) * 2);
}

void fillFirst(WavStreamReader* reader) {
    writeLive(reader->filling, true);
    if (reader->reopenPending) {
        if (reader->stream.is_open()) {
            reader->stream.close();
        }
        reader->stream.clear();
        reader->stream.open(reader->info->path, std::ios::in | std::ios::binary);
        reader->stream.seekg(static_cast<std::streamoff>(reader->info->dataOffset));
        writeLive(reader->reopenPending, false);
    }
    readPiece(reader, reader->firstBuffer);
    publish(reader->filling, false);
}

void fillSecond(WavStreamReader* reader) {
    writeLive(reader->filling, true);
    readPiece(reader, reader->secondBuffer);
    publish(reader->filling, false);
}

void* fillFirstInThread(void* reader) {
    fillFirst(static_cast<WavStreamReader*>(reader));
    return reader;
}

void* fillSecondInThread(void* reader) {
    fillSecond(static_cast<WavStreamReader*>(reader));
    return reader;
}

// Through the queue to a thread of its own: the blocking read occupies no worker of the queue.
void runInThread(WavStreamReader* reader, pthread_t* thread, void* (*fill)(void*)) {
    const dispatch_queue_t queue = dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_HIGH, 0);
    dispatch_async(queue, ^{
        pthread_create(thread, &reader->threadAttributes, fill, reader);
    });
}

} // namespace

void WavStreamReader::start(WavFileInfo* newInfo, const bool& background) {
    const bool inBackground = background; // it may refer to one of the flags below
    info = newInfo;
    streamCounterC = 0;
    startedFlag = true;
    streamFlagA = false;
    streamFlagB = false;
    streamCounterB = 0;
    streamCounterD = 0;
    reopenPending = true;
    fillFirstBuffer(inBackground);
    streamCounterA = 0;
}

void WavStreamReader::fillFirstBuffer(const bool& background) {
    if (background) {
        runInThread(this, &firstThread, fillFirstInThread);
    } else {
        fillFirst(this);
    }
}

void WavStreamReader::fillSecondBuffer(const bool& background) {
    if (background) {
        runInThread(this, &secondThread, fillSecondInThread);
    } else {
        fillSecond(this);
    }
}
