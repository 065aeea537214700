#include "soundlib/examples/SoundFile.h"

#include <sndfile.hh>

#include "soundlib/examples/OutputFile.h"
#include "soundlib/examples/UserError.h"

Sound readSound(const std::string& path) {
    SndfileHandle file(path);
    if (file.rawHandle() == nullptr) {
        throw UserError(path + ": " + file.strError() + " A readable sound file is needed.");
    }
    if (file.channels() > 2) {
        throw UserError(path + ": has " + std::to_string(file.channels()) +
                        " channels; 1 or 2 are needed");
    }
    const auto channels = static_cast<std::size_t>(file.channels());
    std::vector<float> samples(static_cast<std::size_t>(file.frames()) * channels);
    const sf_count_t read = file.readf(samples.data(), file.frames());
    if (read != file.frames()) {
        throw UserError(path + ": ends early; a complete sound file is needed");
    }
    Sound sound{file.samplerate(), {}, {}};
    for (std::size_t i = 0; i < samples.size(); i += channels) {
        sound.left.push_back(samples[i]);
        sound.right.push_back(samples[i + channels - 1]);
    }
    return sound;
}

void writeSound(const std::string& path, const Sound& sound) {
    OutputFile output(path);
    {
        SndfileHandle file(output.temporaryPath(), SFM_WRITE, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 2,
                           sound.sampleRate);
        if (file.rawHandle() == nullptr) {
            throw UserError(path + ": can't be written; a path in a writable folder is needed");
        }
        file.command(SFC_SET_CLIPPING, nullptr, SF_TRUE);
        std::vector<float> samples;
        samples.reserve(sound.left.size() * 2);
        for (std::size_t i = 0; i < sound.left.size(); ++i) {
            samples.push_back(sound.left[i]);
            samples.push_back(sound.right[i]);
        }
        const auto frames = static_cast<sf_count_t>(sound.left.size());
        if (file.writef(samples.data(), frames) != frames) {
            throw UserError(path + ": " + file.strError());
        }
    }
    output.keep();
}
