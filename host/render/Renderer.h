// The road of the sound in a render: source, effect, file.
#pragma once

#include "host/plugin/EffectInstance.h"
#include "host/render/Automation.h"
#include "host/render/FrameSource.h"
#include "host/render/ProgressBar.h"
#include "host/render/SoundFileWriter.h"
#include "host/render/TailGate.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace tvhost {

// Sends a stream through an effect into a sound file, the tail included. The effect must have been
// started with at least `blockSize`; what is written does not depend on the block size, unless the
// effect's answer does. A mono stream feeds both inputs of an effect of two, a stereo stream
// reaches an effect of one as the mean of both channels.
class Renderer {
public:
    // `tailSeconds`: length of the tail; nothing for as long as the echoes last (see TailGate).
    Renderer(EffectInstance& effect, FrameSource& source, Automation& automation,
             SoundFileWriter& writer, int blockSize, std::optional<double> tailSeconds);

    // Throws UserError when reading or writing fails or the effect produces NaN or infinity.
    void run(ProgressBar& progress);

private:
    int fillInput(int frames);
    void process(int frames);
    void checkOutput(int frames) const;
    TailGate makeGate() const;

    EffectInstance& effect_;
    FrameSource& source_;
    Automation& automation_;
    SoundFileWriter& writer_;
    int blockSize_;
    std::optional<double> tailSeconds_;
    std::int64_t position_ = 0; // on the time line, of the next block
    std::int64_t inputEnd_ = 0; // known once the input has ended
    std::vector<float> sourceFrames_;
    std::vector<std::vector<float>> inputs_;
    std::vector<std::vector<float>> outputs_;
    std::vector<float> outputFrames_;
};

} // namespace tvhost
