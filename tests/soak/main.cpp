// Runs the built plug-in for minutes on end: audio on one thread, automation on three, a user on
// the main one. Prints what came of it and ends with 1 when something went wrong.
#include "tests/soak/AudioThread.h"
#include "tests/soak/AutomationThread.h"
#include "tests/soak/MemoryBook.h"
#include "tests/soak/UserSession.h"
#include "tests/support/ProcessMemory.h"
#include "tests/support/screen/XServer.h"

#include "plugin/vst2/EffectOpcodes.h"

#include <CLI/CLI.hpp>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <exception>
#include <memory>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::int64_t kKilobyte = 1024;

// Things done ahead of the first measurement, so that whatever is made once is there.
constexpr int kWarmUp = 1000;

void ask(AEffect* effect, VstInt32 opcode, VstIntPtr value, float opt) {
    effect->dispatcher(effect, opcode, 0, value, nullptr, opt);
}

void printMinute(int minute, const AudioThread& audio, std::int64_t writes,
                 const UserSession& session) {
    const AudioReport report = audio.report();
    const UserSession::Counts& counts = session.counts();
    std::printf("%3d min: %lld blocks, worst %.0f us (%.0f us on the core), %lld writes, "
                "%lld editors, %lld drags, %lld programs, %lld rates, %lld instances, "
                "%lld KB resident\n",
                minute, static_cast<long long>(report.blocks),
                static_cast<double>(report.worstBlock) / 1e3,
                static_cast<double>(report.worstBlockOnCore) / 1e3, static_cast<long long>(writes),
                static_cast<long long>(counts.editors), static_cast<long long>(counts.drags),
                static_cast<long long>(counts.programs), static_cast<long long>(counts.rates),
                static_cast<long long>(counts.instances),
                static_cast<long long>(residentBytes() / kKilobyte));
    std::fflush(stdout);
}

void printAudio(const AudioReport& report) {
    std::printf("Audio: %lld blocks of %d frames at %.0f Hz, which last %.0f us each.\n"
                "  on the core: mean %.2f us, worst %.1f us\n"
                "  by the clock, with all that the system did meanwhile: worst %.1f us, "
                "%lld later than the deadline\n"
                "  with infinities or not-a-numbers: %lld\n",
                static_cast<long long>(report.blocks), static_cast<int>(AudioThread::kFrames),
                AudioThread::kRate, static_cast<double>(AudioThread::kDeadline) / 1e3,
                report.meanBlockOnCore / 1e3, static_cast<double>(report.worstBlockOnCore) / 1e3,
                static_cast<double>(report.worstBlock) / 1e3,
                static_cast<long long>(report.lateBlocks),
                static_cast<long long>(report.nonFiniteBlocks));
}

void printMemory(const MemoryBook& book, const UserSession& session) {
    const UserSession::Counts& now = session.counts();
    const UserSession::Counts& first = book.countsAtFirst();
    std::printf("Memory that stays, beside what one of each leaves alone:\n");
    const auto print = [&](const char* name, std::int64_t count, SessionThing thing, double unit) {
        const std::int64_t left = book.left(thing);
        std::printf("  %-16s %6lld of them: %lld KB, %.0f bytes each; alone %.0f\n", name,
                    static_cast<long long>(count), static_cast<long long>(left / kKilobyte),
                    count == 0 ? 0.0 : static_cast<double>(left) / static_cast<double>(count),
                    unit);
    };
    print("editors", now.editors - first.editors, SessionThing::kEditor, book.units().editor);
    print("changes of rate", now.rates - first.rates, SessionThing::kRate, book.units().rate);
    print("instances", now.instances - first.instances, SessionThing::kInstance,
          book.units().instance);
    std::printf("  everything else, automation and audio: %lld bytes\n",
                static_cast<long long>(book.left(SessionThing::kNothing)));
    std::printf("  in all %lld KB, of which the number of things explains %lld KB\n",
                static_cast<long long>(book.grown() / kKilobyte),
                static_cast<long long>(book.explained(session) / kKilobyte));
}

int soak(double minutes) {
    const XServer screen;
    const LoadedPlugin plugin(TVDELAY_PLUGIN_PATH);
    AEffect* const effect = plugin.entry()(plainHost);
    ask(effect, effOpen, 0, 0.0f);
    ask(effect, effSetSampleRate, 0, static_cast<float>(AudioThread::kRate));
    ask(effect, effSetBlockSize, AudioThread::kFrames, 0.0f);
    ask(effect, effMainsChanged, 1, 0.0f);

    UserSession session(plugin, effect, 2);
    auto audio = std::make_unique<AudioThread>(effect);
    for (int i = 0; i < kWarmUp; ++i) {
        session.doSomething();
    }
    session.closeEditor();
    session.showAllPictures();
    MemoryBook book(session);
    session.setListener([&](SessionThing thing) { book.note(thing); });
    audio = nullptr;
    audio = std::make_unique<AudioThread>(effect); // counts anew

    std::int64_t writes = 0;
    {
        AutomationThread first(effect, 3);
        AutomationThread second(effect, 4);
        AutomationThread third(effect, 5);
        const auto begin = Clock::now();
        const auto end = begin + std::chrono::duration<double, std::ratio<60>>(minutes);
        for (int minute = 1; Clock::now() < end;) {
            session.doSomething();
            writes = first.writes() + second.writes() + third.writes();
            if (Clock::now() >= begin + std::chrono::minutes(minute)) {
                printMinute(minute, *audio, writes, session);
                ++minute;
            }
        }
    }
    session.closeEditor();
    book.note(SessionThing::kNothing);
    const AudioReport report = audio->report();
    audio = nullptr;

    const UserSession::Counts& counts = session.counts();
    printAudio(report);
    std::printf(
        "Meanwhile: %lld parameter writes on three threads; %lld editors opened and closed, "
        "%lld drags, %lld programs, %lld rates, %lld instances.\n",
        static_cast<long long>(writes), static_cast<long long>(counts.editors),
        static_cast<long long>(counts.drags), static_cast<long long>(counts.programs),
        static_cast<long long>(counts.rates), static_cast<long long>(counts.instances));
    printMemory(book, session);
    ask(effect, effMainsChanged, 0, 0.0f);
    ask(effect, effClose, 0, 0.0f);
    return report.nonFiniteBlocks == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Runs the built plug-in for minutes on end, from five threads");
    double minutes = 0.0;
    app.add_option("MINUTES", minutes, "How long")->required()->check(CLI::Range(0.01, 10000.0));
    CLI11_PARSE(app, argc, argv);
    try {
        return soak(minutes);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "soak: %s\n", error.what());
        return 2;
    }
}
