// Whole sound files in memory, through libsndfile.
#pragma once

#include <string>
#include <vector>

struct Sound {
    int sampleRate; // Hz
    std::vector<float> left;
    std::vector<float> right;
};

// Reads a mono or stereo file of any format that libsndfile knows; mono goes to both channels.
// Throws UserError.
Sound readSound(const std::string& path);

// Writes a 16-bit WAV file; samples beyond full scale are clipped. Throws UserError and leaves no
// half-written file.
void writeSound(const std::string& path, const Sound& sound);
