#include "host/commands/RenderJob.h"

#include "host/base/NumberText.h"
#include "host/base/PlainText.h"
#include "host/base/UserError.h"
#include "host/plugin/EffectInstance.h"
#include "host/render/Automation.h"
#include "host/render/ProgressBar.h"
#include "host/render/SampleRateConverter.h"
#include "host/render/SoundFileReader.h"
#include "host/render/SoundFileWriter.h"
#include "host/render/StandardStreams.h"

#include <chrono>
#include <memory>

namespace tvhost {

namespace {

std::unique_ptr<FrameSource> atRate(std::unique_ptr<FrameSource> source, std::optional<int> rate,
                                    const std::string& name) {
    if (rate && *rate != source->sampleRate()) {
        return std::make_unique<SampleRateConverter>(std::move(source), *rate, name);
    }
    if (source->sampleRate() < RenderTerms::kLowestRate ||
        source->sampleRate() > RenderTerms::kHighestRate) {
        throw UserError(name + " is at " + std::to_string(source->sampleRate()) +
                        " Hz; give a --rate from " + std::to_string(RenderTerms::kLowestRate) +
                        " to " + std::to_string(RenderTerms::kHighestRate) + " to render at");
    }
    return source;
}

std::string count(std::int64_t number, const char* thing) {
    return std::to_string(number) + " " + thing + (number == 1 ? "" : "s");
}

std::string latencyNote(std::int64_t frames, int sampleRate) {
    if (frames == 0) {
        return {};
    }
    const double seconds = static_cast<double>(frames) / sampleRate;
    return ", latency of " + count(frames, "sample") + " (" + fixedNumber(seconds * 1000.0, 1) +
           " ms) taken off";
}

SoundFormat formatFor(const RenderOrder& order, const std::string& output, int channels,
                      const FrameSource& source) {
    if (isStandardStream(output)) {
        return SoundFormat::forStream(order.raw);
    }
    std::optional<std::int64_t> expected;
    if (source.expectedFrames() > 0) {
        const double tail = order.terms.tailSeconds.value_or(TailGate::kLongestSeconds);
        expected = source.expectedFrames() + static_cast<std::int64_t>(tail * source.sampleRate());
    }
    return SoundFormat::forFile(output, channels, source.sampleRate(), expected);
}

} // namespace

void renderSound(const RenderOrder& order, const std::string& input, const std::string& output,
                 const std::function<void(const RenderOutcome&)>& done) {
    if (!isStandardStream(output)) {
        SoundFormat::requireKnownExtension(output);
    }
    // Before the plug-in, which is not to read standard input.
    auto reader = std::make_unique<SoundFileReader>(input, order.raw);
    const SoundFileReader& file = *reader;
    const std::string name = inputName(input);
    const std::unique_ptr<FrameSource> source = atRate(std::move(reader), order.sampleRate, name);
    const int sampleRate = source->sampleRate();

    EffectInstance effect(order.effect.load());
    effect.requireAudio();
    effect.start(sampleRate, order.terms.blockSize);
    order.effect.settings.apply(effect);
    effect.followIoChange();
    Automation changes(effect, order.automation, sampleRate);

    const SoundFormat format = formatFor(order, output, effect.outputCount(), *source);
    SoundFileWriter writer(output, format, effect.outputCount(), sampleRate);
    Renderer renderer(effect, *source, changes, writer, order.terms);
    const auto begin = std::chrono::steady_clock::now();
    {
        ProgressBar progress(source->expectedFrames(), sampleRate);
        renderer.run(progress);
    }
    const std::string damage = file.damage();
    if (!damage.empty() && !order.force) {
        throw UserError(name + " is damaged: " + damage +
                        "; give an intact file, or --force to render what there is");
    }
    writer.finish();
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin;

    RenderOutcome outcome;
    const auto warn = [&](const std::string& text) { outcome.warnings.push_back(text); };
    if (!damage.empty()) {
        warn(name + " is damaged: " + damage);
    }
    if (const std::string note = renderer.plan().note(effect.name()); !note.empty()) {
        warn(note);
    }
    if (writer.samplesClipped() > 0) {
        warn(count(writer.samplesClipped(), "sample") + " beyond full scale clipped in " +
             outputName(output) + ", since " + format.name + " cannot hold them; WAV can");
    }
    if (renderer.tailWasCut()) {
        warn("the tail was still heard when it was cut after " +
             shortNumber(TailGate::kLongestSeconds, 0) + " s; --tail makes it longer");
    }
    if (changes.pending() > 0) {
        warn(count(static_cast<std::int64_t>(changes.pending()), "--automate point") +
             " after the end of the output had no effect; --tail makes it longer");
    }
    const double seconds = static_cast<double>(writer.framesWritten()) / sampleRate;
    outcome.summary = plainText(outputName(output)) + ": " + fixedNumber(seconds, 3) + " s, peak " +
                      decibelText(writer.peak()) + "FS, " +
                      fixedNumber(seconds / elapsed.count(), 0) + "x real time" +
                      latencyNote(renderer.latency(), sampleRate);
    done(outcome);
}

} // namespace tvhost
