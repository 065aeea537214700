#include "host/commands/PlayCommand.h"

#include "host/base/NumberText.h"
#include "host/base/PlainText.h"
#include "host/base/StopRequest.h"
#include "host/base/UserError.h"
#include "host/commands/KeptSettings.h"
#include "host/commands/SecondsOption.h"
#include "host/play/LevelMeter.h"
#include "host/play/SoundFeed.h"
#include "host/plugin/EffectInstance.h"
#include "host/render/SampleRateConverter.h"
#include "host/render/SoundFileReader.h"
#include "host/window/HostedEditor.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <memory>
#include <optional>
#include <thread>

namespace tvhost {

namespace {

constexpr int kLowestRate = 1000;
constexpr int kHighestRate = 192000;
constexpr int kUsualBlock = 512;
constexpr int kSmallestBlock = 16;
constexpr int kLargestBlock = 8192;

// Of the terminal and of the editor.
constexpr auto kTurn = std::chrono::milliseconds(33);
// Of the fade-out, before the stream is cut off.
constexpr auto kLongestEnd = std::chrono::seconds(2);

int numberFrom(const std::string& option, const std::string& text, int usual, int lowest,
               int highest, const char* unit) {
    if (text.empty()) {
        return usual;
    }
    const auto number = parseWholeNumber(text);
    if (!number || *number < lowest || *number > highest) {
        throw UserError(option + " " + text + ": give a whole number of " + unit + " from " +
                        std::to_string(lowest) + " to " + std::to_string(highest));
    }
    return static_cast<int>(*number);
}

std::unique_ptr<FrameSource> openSound(const std::string& path, int rate) {
    std::unique_ptr<FrameSource> source = std::make_unique<SoundFileReader>(path);
    if (source->sampleRate() == rate) {
        return source;
    }
    return std::make_unique<SampleRateConverter>(std::move(source), rate, path);
}

// The server must not call what has gone, however this ends.
class StoppedAtTheEnd {
public:
    explicit StoppedAtTheEnd(AudioServer& server) : server_(server) {}
    ~StoppedAtTheEnd() { server_.stop(); }
    StoppedAtTheEnd(const StoppedAtTheEnd&) = delete;
    StoppedAtTheEnd& operator=(const StoppedAtTheEnd&) = delete;

private:
    AudioServer& server_;
};

std::int64_t dropoutsIn(const Player::Report& report) {
    return report.underruns + report.overruns + report.late + report.unfed;
}

std::string count(std::int64_t number, const char* one, const char* many) {
    return std::to_string(number) + " " + (number == 1 ? one : many);
}

} // namespace

CLI::App* PlayCommand::declare(CLI::App& app) {
    CLI::App* const command =
        app.add_subcommand("play", "Send a sound file through an effect to the sound card");
    CLI::Option* const file =
        command->add_option("FILE", input_, "Sound file to play")->type_name("");
    options_.declarePlugin(*command);
    options_.declareSettings(*command);
    CLI::Option* const live =
        command->add_flag("--input", live_, "Send live sound through the effect, not a file");
    live->excludes(file);
    command->add_flag("--loop", loops_, "Begin again at the file's end, until stopped")
        ->excludes(live);
    command->add_flag("--editor", editor_,
                      "Show the effect's editor, and stop when its window is closed");
    command
        ->add_option("--server", server_,
                     "Sound server: jack, pulse or alsa; without it the first that runs. PipeWire "
                     "stands in for each of them")
        ->type_name("NAME");
    command->add_option("--device", device_, "Device to play on, by name")->type_name("NAME");
    command->add_flag("--devices", devices_, "Print servers and devices, and play nothing");
    command
        ->add_option("--rate", rate_,
                     "Sample rate of effect and card; without it the file's, or the server's own")
        ->type_name("HZ");
    command
        ->add_option("--block", block_,
                     "Frames that the effect gets at a time, " + std::to_string(kSmallestBlock) +
                         " to " + std::to_string(kLargestBlock) + "; " +
                         std::to_string(kUsualBlock) + " without. JACK keeps its own size")
        ->type_name("N");
    declareLongestGap(*command, longestGap_);
    declareSave(*command, save_);
    command->footer("Ends by Ctrl-C, by closing the editor's window, or when the file and its\n"
                    "echoes have ended.\n"
                    "\n"
                    "  tvhost play guitar.wav --program Canyon --loop --editor\n"
                    "  tvhost play --input --program SlapBack");
    return command;
}

StreamWish PlayCommand::wish() const {
    StreamWish wish;
    wish.server = server_;
    wish.device = device_;
    wish.sampleRate = numberFrom("--rate", rate_, 0, kLowestRate, kHighestRate, "Hz");
    wish.blockSize =
        numberFrom("--block", block_, kUsualBlock, kSmallestBlock, kLargestBlock, "frames");
    return wish;
}

void PlayCommand::listDevices() const {
    const std::string devices = AudioServer::listing();
    if (devices.empty()) {
        throw UserError("there is no sound server; start PipeWire, PulseAudio or JACK");
    }
    std::cout << devices;
}

void PlayCommand::tell(const Player::Report& report, const AudioServer& server,
                       const std::string& effectName) const {
    if (report.notNumbers > 0) {
        std::fprintf(stderr,
                     "tvhost: warning: %s gave %s that is no finite number; silence was played "
                     "there\n",
                     effectName.c_str(), count(report.notNumbers, "sample", "samples").c_str());
    }
    std::string dropouts;
    const auto add = [&](std::int64_t number, const char* one, const char* many) {
        if (number > 0) {
            dropouts += (dropouts.empty() ? "" : ", ") + count(number, one, many);
        }
    };
    add(report.underruns, "underrun", "underruns");
    add(report.overruns, "overrun", "overruns");
    add(report.late, "block too late", "blocks too late");
    add(report.unfed, "block without input", "blocks without input");
    const double seconds = static_cast<double>(report.frames) / server.sampleRate();
    std::cout << plainText(live_ ? server.deviceName() : input_) << ": " << fixedNumber(seconds, 3)
              << " s at " << server.sampleRate() << " Hz by " << server.serverName() << ", peak "
              << decibelText(report.peak) << "FS, " << (dropouts.empty() ? "no dropouts" : dropouts)
              << "\n";
}

void PlayCommand::run() {
    if (devices_) {
        listDevices();
        return;
    }
    if (input_.empty() && !live_) {
        throw UserError("there is nothing to play; give a sound file, or --input for live sound");
    }
    StreamWish wished = wish();
    const double longestGap = longestGapFrom(longestGap_);
    requirePresetName(save_);
    const StopRequest stop;
    const auto module = options_.load();
    EffectInstance effect(module);
    effect.requireAudio();
    if (editor_) {
        HostedEditor::requireEditor(effect);
    }
    if (!live_) {
        wished.likedRate = SoundFileReader(input_).sampleRate();
    }
    wished.outputs = std::max(effect.outputCount(), 2);
    wished.inputs = live_ ? std::max(effect.inputCount(), 2) : 0;

    AudioServer server(wished);
    const int rate = server.sampleRate();
    effect.setRealTime(true);
    effect.start(rate, server.blockSize());
    options_.settings.apply(effect);
    KeptSettings kept(module, options_.settings, rate);

    std::unique_ptr<SoundFeed> feed;
    if (!live_) {
        feed = std::make_unique<SoundFeed>([&] { return openSound(input_, rate); }, loops_);
    }
    Player player(effect, feed.get(), std::max(server.inputs(), 1), rate, server.blockSize(),
                  longestGap);
    std::optional<HostedEditor> editor;
    if (editor_) {
        editor.emplace(effect, EditorWindow::Kind::kManaged);
        editor->applyAgain(options_.settings);
    }
    server.start([&](const AudioServer::Block& block) { return player.process(block); });
    const StoppedAtTheEnd stopped(server);
    {
        LevelMeter meter(feed && !loops_ ? feed->expectedFrames() : 0, rate);
        while (server.isRunning() && !stop.made() && !(editor && editor->window().closed())) {
            if (editor) {
                editor->advance(0);
                editor->window().wait(kTurn);
            } else {
                std::this_thread::sleep_for(kTurn);
            }
            const Player::Report report = player.report();
            meter.update(feed && !loops_ ? player.position() : report.frames, player.takeLevels(),
                         dropoutsIn(report));
        }
    }
    const bool gone = !server.isRunning() && !player.hasFinished();
    player.stop();
    const auto end = std::chrono::steady_clock::now() + kLongestEnd;
    while (server.isRunning() && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    server.stop();
    editor.reset();
    if (feed) {
        feed->rethrow();
    }
    if (const std::string note = player.plan().note(effect.name()); !note.empty()) {
        std::fprintf(stderr, "tvhost: warning: %s\n", note.c_str());
    }
    tell(player.report(), server, effect.name());
    kept.tell(effect, save_);
    if (gone) {
        throw UserError(server.serverName() +
                        " has gone or closed the stream; give a --server that stays");
    }
}

} // namespace tvhost
