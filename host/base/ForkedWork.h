// Work done in processes of its own, so that what crashes or hangs there harms nobody else.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace tvhost {

// What a piece of work has to say.
struct ForkedResult {
    std::string text;
    std::shared_ptr<void> kept; // let go once the text is out, so that it is safe from what follows

    ForkedResult(std::string given) : text(std::move(given)) {}
    ForkedResult(std::string given, std::shared_ptr<void> object)
        : text(std::move(given)), kept(std::move(object)) {}
};

// How one piece of work ended.
struct ForkedAnswer {
    enum class End {
        kAnswered, // `text` is what the work returned
        kRefused,  // `text` is that of the exception that it threw
        kCrashed,  // `signal` ended its process
        kQuit,     // its process ended by itself, without an answer
        kTimedOut  // its process was stopped when its time was over
    };

    End end = End::kQuit;
    std::string text;
    int signal = 0; // of kCrashed
    int status = 0; // of kQuit

    // What happened, for a sentence that names whose fault it is: "crashed (Segmentation fault)".
    // For kRefused the text itself.
    std::string fault() const;
};

// How the work is shared out.
struct ForkedTerms {
    std::size_t jobs = 1;                               // processes at a time, 1 or more
    std::optional<std::chrono::milliseconds> timeLimit; // of each piece, by the clock
    bool silent = false;                                // its standard output and error go nowhere
};

// Runs `work` for 0 to `count` - 1, each in a forked process, and hands each answer to `done` in
// the order in which they come. What a piece of work leaves running goes when it ends, and all of
// it when this process does. Only in a process with one thread. Throws std::system_error when the
// system gives no process.
void runForked(std::size_t count, const ForkedTerms& terms,
               const std::function<ForkedResult(std::size_t)>& work,
               const std::function<void(std::size_t, const ForkedAnswer&)>& done);

// How many pieces of work this machine does at a time, 1 or more.
std::size_t usualJobs();

} // namespace tvhost
