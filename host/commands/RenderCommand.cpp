#include "host/commands/RenderCommand.h"

#include "host/base/NumberText.h"
#include "host/base/PlainText.h"
#include "host/base/UserError.h"
#include "host/commands/SecondsOption.h"
#include "host/plugin/EffectInstance.h"
#include "host/render/Automation.h"
#include "host/render/ProgressBar.h"
#include "host/render/Renderer.h"
#include "host/render/SampleRateConverter.h"
#include "host/render/SoundFileReader.h"
#include "host/render/SoundFileWriter.h"

#include <chrono>
#include <cstdio>
#include <iostream>
#include <memory>
#include <optional>

namespace tvhost {

namespace {

constexpr int kDefaultBlock = 512;
constexpr int kLargestBlock = 65536;
constexpr int kLowestRate = 1000;
constexpr int kHighestRate = 192000;
constexpr double kLongestTail = 3600.0;

int blockFrom(const std::string& text) {
    if (text.empty()) {
        return kDefaultBlock;
    }
    const auto block = parseWholeNumber(text);
    if (!block || *block < 1 || *block > kLargestBlock) {
        throw UserError("--block " + text + ": give a whole number of frames from 1 to " +
                        std::to_string(kLargestBlock));
    }
    return static_cast<int>(*block);
}

std::optional<int> rateFrom(const std::string& text) {
    if (text.empty()) {
        return std::nullopt;
    }
    const auto rate = parseWholeNumber(text);
    if (!rate || *rate < kLowestRate || *rate > kHighestRate) {
        throw UserError("--rate " + text + ": give a whole number of Hz from " +
                        std::to_string(kLowestRate) + " to " + std::to_string(kHighestRate));
    }
    return static_cast<int>(*rate);
}

std::unique_ptr<FrameSource> atRate(std::unique_ptr<FrameSource> source, std::optional<int> rate,
                                    const std::string& path) {
    if (rate && *rate != source->sampleRate()) {
        return std::make_unique<SampleRateConverter>(std::move(source), *rate, path);
    }
    if (source->sampleRate() < kLowestRate || source->sampleRate() > kHighestRate) {
        throw UserError(path + " is at " + std::to_string(source->sampleRate()) +
                        " Hz; give a --rate from " + std::to_string(kLowestRate) + " to " +
                        std::to_string(kHighestRate) + " to render at");
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

void warn(const std::string& text) {
    std::fprintf(stderr, "tvhost: warning: %s\n", text.c_str());
}

} // namespace

CLI::App* RenderCommand::declare(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("render", "Send a sound file through an effect");
    command
        ->add_option("IN", input_,
                     "Sound file to read, of any number of channels, at any sample rate")
        ->required()
        ->type_name("");
    command
        ->add_option("OUT", output_,
                     "Sound file to write; its extension is its format: " +
                         SoundFormat::knownExtensions())
        ->required()
        ->type_name("");
    options_.declarePlugin(*command);
    options_.declareSettings(*command);
    command
        ->add_option("--automate", automation_,
                     "Set a parameter to the value V at the time T, in seconds of the output, and "
                     "so on; values step, on the sample, and hold until the next; may be repeated")
        ->type_name("NAME=T:V,T:V,...")
        ->allow_extra_args(false);
    command
        ->add_option("--block", block_,
                     "Most frames the effect gets at a time, 1 to " +
                         std::to_string(kLargestBlock) + "; " + std::to_string(kDefaultBlock) +
                         " without")
        ->type_name("N");
    command
        ->add_option("--rate", rate_,
                     "Run the effect and write at this sample rate; the input is resampled by "
                     "libsamplerate's best converter. Without it, the input's own rate")
        ->type_name("HZ");
    command
        ->add_option("--tail", tail_,
                     "Length of what follows the input's end; without it until the echoes have "
                     "died away below -90 dBFS, at most 60 s")
        ->type_name("SECONDS");
    declareLongestGap(*command, longestGap_);
    command->add_flag("--force", force_, "Render what there is of a damaged input, with a warning");
    command->add_flag("--no-compensation", uncompensated_,
                      "Leave the effect's latency in the output");
    command->footer(
        "A mono input feeds both inputs of a stereo effect; otherwise each channel goes into one\n"
        "input, and inputs without a channel get silence. OUT appears when it is complete and\n"
        "may be IN. WAV, AIFF, CAF, W64, RF64 and AU are written in floating point and keep what\n"
        "goes beyond full scale; FLAC has 24 bits and clips it.\n"
        "\n"
        "  tvhost render guitar.wav echo.wav --program SlapBack\n"
        "  tvhost render voice.flac echo.flac --set Delay=0.3 --set Mix=0.5 --tail 4\n"
        "  tvhost render drums.wav echo.wav --automate Mix=0:0,2.5:0.8 --rate 48000");
    return command;
}

void RenderCommand::run() {
    const std::optional<int> givenRate = rateFrom(rate_);
    RenderTerms terms;
    terms.blockSize = blockFrom(block_);
    terms.tailSeconds = secondsFrom("--tail", tail_, kLongestTail);
    terms.longestGap = longestGapFrom(longestGap_);
    terms.compensated = !uncompensated_;
    SoundFormat::requireKnownExtension(output_);

    EffectInstance effect(options_.load());
    effect.requireAudio();
    auto reader = std::make_unique<SoundFileReader>(input_);
    const SoundFileReader& file = *reader;
    const std::unique_ptr<FrameSource> source = atRate(std::move(reader), givenRate, input_);
    const int sampleRate = source->sampleRate();
    effect.start(sampleRate, terms.blockSize);
    options_.settings.apply(effect);
    effect.followIoChange();
    Automation changes(effect, automation_, sampleRate);

    const std::int64_t expected =
        source->expectedFrames() +
        static_cast<std::int64_t>(terms.tailSeconds.value_or(TailGate::kLongestSeconds) *
                                  sampleRate);
    const SoundFormat format =
        SoundFormat::forFile(output_, effect.outputCount(), sampleRate, expected);
    SoundFileWriter writer(output_, format, effect.outputCount(), sampleRate);

    Renderer renderer(effect, *source, changes, writer, terms);
    const auto begin = std::chrono::steady_clock::now();
    {
        ProgressBar progress(source->expectedFrames(), sampleRate);
        renderer.run(progress);
    }
    const std::string damage = file.damage();
    if (!damage.empty() && !force_) {
        throw UserError(input_ + " is damaged: " + damage +
                        "; give an intact file, or --force to render what there is");
    }
    writer.finish();
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin;

    if (!damage.empty()) {
        warn(input_ + " is damaged: " + damage);
    }
    const ChannelPlan plan(source->channels(), effect.inputCount(), effect.outputCount());
    if (const std::string note = plan.note(effect.name()); !note.empty()) {
        warn(note);
    }
    if (writer.samplesClipped() > 0) {
        warn(count(writer.samplesClipped(), "sample") + " beyond full scale clipped in " + output_ +
             ", since " + format.name + " cannot hold them; WAV can");
    }
    if (renderer.tailWasCut()) {
        warn("the tail was still heard when it was cut after " +
             shortNumber(TailGate::kLongestSeconds, 0) + " s; --tail makes it longer");
    }
    if (changes.pending() > 0) {
        warn(count(changes.pending(), "--automate point") +
             " after the end of the output had no effect; --tail makes it longer");
    }

    const double seconds = static_cast<double>(writer.framesWritten()) / sampleRate;
    std::cout << plainText(output_) << ": " << fixedNumber(seconds, 3) << " s, peak "
              << decibelText(writer.peak()) << "FS, " << fixedNumber(seconds / elapsed.count(), 0)
              << "x real time" << latencyNote(renderer.latency(), sampleRate) << "\n"
              << std::flush;
}

} // namespace tvhost
