// The road of the sound in a render: source, effect, file.
#pragma once

#include "host/plugin/EffectInstance.h"
#include "host/render/Automation.h"
#include "host/render/ChannelPlan.h"
#include "host/render/FrameSource.h"
#include "host/render/ProgressBar.h"
#include "host/render/SoundFileWriter.h"
#include "host/render/TailGate.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace tvhost {

// What a render is to be like.
struct RenderTerms {
    static constexpr int kLowestRate = 1000; // Hz
    static constexpr int kHighestRate = 192000;

    int blockSize = 512;               // most frames that the effect gets at a time
    std::optional<double> tailSeconds; // nothing for as long as the echoes last (see TailGate)
    double longestGap = TailGate::kUsualGapSeconds; // between echoes
    bool compensated = true; // the output begins where the input does, whatever the latency
};

// Sends a stream through an effect into a sound file, the tail included. The effect must have been
// started with at least the block size; what is written does not depend on that, unless the
// effect's answer does. ChannelPlan tells which channel goes where; all outputs are written.
class Renderer {
public:
    // The effect's latency is taken as it stands now.
    Renderer(EffectInstance& effect, FrameSource& source, Automation& automation,
             SoundFileWriter& writer, const RenderTerms& terms);

    // Throws UserError when reading or writing fails or the effect produces NaN or infinity.
    void run(ProgressBar& progress);

    // Which channel goes where.
    const ChannelPlan& plan() const { return plan_; }
    // Frames taken off the output's beginning.
    std::int64_t latency() const { return latency_; }
    // After run(): whether the output ends though its tail may not have ended.
    bool tailWasCut() const { return tailCut_; }

private:
    int fillInput(int frames);
    void process(int frames);
    void checkOutput(int frames) const;
    TailGate makeGate() const;
    void pushTail(TailGate& tail, int from, int to);

    EffectInstance& effect_;
    FrameSource& source_;
    Automation& automation_;
    SoundFileWriter& writer_;
    RenderTerms terms_;
    ChannelPlan plan_;
    std::int64_t latency_;
    std::int64_t position_ = 0; // on the time line, of the next block
    std::int64_t inputEnd_ = 0; // known once the input has ended
    bool tailCut_ = false;
    std::vector<float> sourceFrames_;
    std::vector<std::vector<float>> inputs_;
    std::vector<std::vector<float>> outputs_;
    std::vector<float> outputFrames_;
};

} // namespace tvhost
