// Sound files that tests make and look at.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

// A whole sound file in memory.
struct SoundFile {
    int rate = 44100;
    int channels = 2;
    int format = 0;             // libsndfile's; 0 on writing stands for 32-bit float WAV
    std::vector<float> samples; // interleaved

    std::size_t frames() const { return samples.size() / static_cast<std::size_t>(channels); }
    float at(std::size_t frame, int channel) const {
        return samples[frame * static_cast<std::size_t>(channels) +
                       static_cast<std::size_t>(channel)];
    }
    float& at(std::size_t frame, int channel) {
        return samples[frame * static_cast<std::size_t>(channels) +
                       static_cast<std::size_t>(channel)];
    }

    // The frame of the largest magnitude of a channel from `from` on.
    std::size_t peakFrame(int channel, std::size_t from = 0) const;
};

// Both throw std::runtime_error when it fails.
SoundFile readSound(const std::string& path);
void writeSound(const std::string& path, const SoundFile& sound);

SoundFile silence(int channels, std::size_t frames, int rate = 44100);
// Noise between -level and level, the same for the same seed.
SoundFile noise(int channels, std::size_t frames, int rate, float level, unsigned seed);
