#include "tests/host/SoundFile.h"

#include "tests/support/Dice.h"

#include <sndfile.h>

#include <cmath>
#include <stdexcept>

std::size_t SoundFile::peakFrame(int channel, std::size_t from) const {
    std::size_t peak = from;
    for (std::size_t i = from; i < frames(); ++i) {
        if (std::abs(at(i, channel)) > std::abs(at(peak, channel))) {
            peak = i;
        }
    }
    return peak;
}

SoundFile readSound(const std::string& path) {
    SF_INFO info{};
    SNDFILE* const file = sf_open(path.c_str(), SFM_READ, &info);
    if (!file) {
        throw std::runtime_error("cannot read " + path);
    }
    SoundFile sound{info.samplerate, info.channels, info.format, {}};
    sound.samples.resize(static_cast<std::size_t>(info.frames * info.channels));
    const sf_count_t count = sf_readf_float(file, sound.samples.data(), info.frames);
    sf_close(file);
    if (count != info.frames) {
        throw std::runtime_error("cannot read all of " + path);
    }
    return sound;
}

void writeSound(const std::string& path, const SoundFile& sound) {
    SF_INFO info{};
    info.samplerate = sound.rate;
    info.channels = sound.channels;
    info.format = sound.format ? sound.format : SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    SNDFILE* const file = sf_open(path.c_str(), SFM_WRITE, &info);
    if (!file) {
        throw std::runtime_error("cannot write " + path);
    }
    const auto frames = static_cast<sf_count_t>(sound.frames());
    const sf_count_t count = sf_writef_float(file, sound.samples.data(), frames);
    if (sf_close(file) != 0 || count != frames) {
        throw std::runtime_error("cannot write all of " + path);
    }
}

SoundFile silence(int channels, std::size_t frames, int rate) {
    return {rate, channels, 0,
            std::vector<float>(frames * static_cast<std::size_t>(channels), 0.0f)};
}

SoundFile noise(int channels, std::size_t frames, int rate, float level, unsigned seed) {
    SoundFile sound = silence(channels, frames, rate);
    Dice dice(seed);
    for (float& sample : sound.samples) {
        sample = dice.within(-level, level);
    }
    return sound;
}
