#include "host/commands/RenderCommand.h"

#include "host/base/NumberText.h"
#include "host/base/PlainText.h"
#include "host/base/UserError.h"
#include "host/commands/JobsOption.h"
#include "host/commands/RenderBatch.h"
#include "host/commands/SecondsOption.h"
#include "host/render/SoundFormat.h"
#include "host/render/StandardStreams.h"

#include <cstdio>
#include <iostream>
#include <optional>

namespace tvhost {

namespace {

constexpr int kDefaultBlock = 512;
constexpr int kLargestBlock = 65536;
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
    if (!rate || *rate < RenderTerms::kLowestRate || *rate > RenderTerms::kHighestRate) {
        throw UserError("--rate " + text + ": give a whole number of Hz from " +
                        std::to_string(RenderTerms::kLowestRate) + " to " +
                        std::to_string(RenderTerms::kHighestRate));
    }
    return static_cast<int>(*rate);
}

void warn(const std::string& text) {
    std::fprintf(stderr, "tvhost: warning: %s\n", plainText(text).c_str());
}

} // namespace

CLI::App* RenderCommand::declare(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("render", "Send a sound file through an effect");
    command
        ->add_option("IN", input_,
                     "Sound file to read, of any number of channels, at any sample rate; - is "
                     "standard input")
        ->required()
        ->type_name("");
    command
        ->add_option("OUT", output_,
                     "Sound file to write; its extension is its format: " +
                         SoundFormat::knownExtensions() + "; - is standard output, in WAV")
        ->type_name("");
    command
        ->add_option("MORE", more_, "With --out-folder, OUT and all further files are read as well")
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
    command
        ->add_option("--raw", raw_,
                     "What goes through - is samples without a header: one of " +
                         RawFormat::kinds() + "; standard input's rate and channels as well")
        ->type_name("KIND[,RATE,CHANNELS]");
    command
        ->add_option("--out-folder", folder_,
                     "Read all files given, and write each under its own name into this folder")
        ->type_name("FOLDER");
    declareJobs(*command, jobs_, "With --out-folder, files rendered at a time");
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
        "  tvhost render drums.wav echo.wav --automate Mix=0:0,2.5:0.8 --rate 48000\n"
        "  tvhost render *.wav --out-folder wet --program Canyon\n"
        "  sox in.mp3 -t wav - | tvhost render - - | ffmpeg -i - out.m4a");
    return command;
}

RenderOrder RenderCommand::order() const {
    RenderOrder order;
    order.effect = options_;
    order.automation = automation_;
    order.sampleRate = rateFrom(rate_);
    order.terms.blockSize = blockFrom(block_);
    order.terms.tailSeconds = secondsFrom("--tail", tail_, kLongestTail);
    order.terms.longestGap = longestGapFrom(longestGap_);
    order.terms.compensated = !uncompensated_;
    order.force = force_;
    if (raw_.empty()) {
        return order;
    }
    order.raw = RawFormat::from(raw_);
    if (isStandardStream(input_) != order.raw->sampleRate.has_value()) {
        throw UserError(order.raw->sampleRate
                            ? "--raw " + raw_ + ": only standard input has a rate and channels " +
                                  "of its own; give --raw " + order.raw->name
                            : "--raw " + raw_ + ": rate and channels of standard input are " +
                                  "missing; give them as in --raw " + raw_ + ",44100,2");
    }
    return order;
}

void RenderCommand::run() {
    if (!folder_.empty()) {
        runBatch();
        return;
    }
    if (output_.empty()) {
        throw UserError("OUT is missing; give the sound file to write, or --out-folder; see "
                        "'tvhost render --help'");
    }
    if (!more_.empty()) {
        throw UserError("there is one sound file too many, " + more_.front() +
                        "; give one to read and one to write, or --out-folder; see "
                        "'tvhost render --help'");
    }
    if (!jobs_.empty()) {
        throw UserError("--jobs " + jobs_ +
                        ": a single file is rendered at once; give several "
                        "and --out-folder");
    }
    if (!raw_.empty() && !isStandardStream(input_) && !isStandardStream(output_)) {
        throw UserError("--raw " + raw_ +
                        ": neither IN nor OUT is -; only what goes through "
                        "standard input or output can be raw");
    }
    renderSound(order(), input_, output_, [this](const RenderOutcome& outcome) {
        for (const std::string& warning : outcome.warnings) {
            warn(warning);
        }
        if (isStandardStream(output_)) {
            std::fprintf(stderr, "%s\n", outcome.summary.c_str());
        } else {
            std::cout << outcome.summary << "\n" << std::flush;
        }
    });
}

void RenderCommand::runBatch() {
    std::vector<std::string> inputs = {input_};
    if (!output_.empty()) {
        inputs.push_back(output_);
    }
    inputs.insert(inputs.end(), more_.begin(), more_.end());
    if (!raw_.empty()) {
        throw UserError("--raw " + raw_ +
                        ": only what goes through standard input or output can "
                        "be raw; leave out --out-folder");
    }
    if (!options_.log.empty()) {
        throw UserError("--log " + options_.log +
                        ": a log is of one render; leave out "
                        "--out-folder");
    }
    const std::size_t jobs = jobsFrom(jobs_);
    failed_ = !RenderBatch(order(), inputs, folder_).run(jobs);
}

} // namespace tvhost
