#include "soundlib/WavStreamReaderMaker.h"

#include <memory>

WavStreamReader* makeWavStreamReader() {
    auto reader = std::make_unique<WavStreamReader>();
    auto firstBuffer = std::make_unique<std::int16_t[]>(wavReadLength);
    auto secondBuffer = std::make_unique<std::int16_t[]>(wavReadLength);
    if (pthread_attr_init(&reader->threadAttributes) != 0) {
        throw std::bad_alloc();
    }
    pthread_attr_setdetachstate(&reader->threadAttributes, PTHREAD_CREATE_DETACHED);
    reader->firstBuffer = firstBuffer.release();
    reader->secondBuffer = secondBuffer.release();
    return reader.release();
}

void destroyWavStreamReader(WavStreamReader* reader) {
    if (reader == nullptr) {
        return;
    }
    pthread_attr_destroy(&reader->threadAttributes);
    delete[] reader->firstBuffer;
    delete[] reader->secondBuffer;
    delete reader;
}
