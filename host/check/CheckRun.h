// What a running check works with: the plug-in, its random numbers and where findings go.
#pragma once

#include "host/check/CheckReport.h"
#include "host/check/LastCall.h"
#include "host/plugin/PluginModule.h"

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>

namespace tvhost {

// Thrown by a check that says nothing about the plug-in in hand; the text says why.
class CheckSkipped : public std::runtime_error {
public:
    explicit CheckSkipped(const std::string& reason) : std::runtime_error(reason) {}
};

// One run of one check. What a check draws depends on the seed and its name alone, so that it
// repeats whatever ran before it. finding() from any thread, the rest from the check's own.
class CheckRun {
public:
    CheckRun(std::filesystem::path file, const std::string& checkName, std::uint64_t seed,
             CheckReport& report, LastCall& lastCall);

    // Loads the plug-in at the first call.
    const std::shared_ptr<const PluginModule>& module();
    // Forgets it, and unloads it when no effect uses it.
    void unload();

    // Findings with one topic are of one kind; known behaviours are told apart by it.
    void finding(const std::string& topic, const std::string& text);
    bool hasFound() const { return found_; }

    // What the following calls are about, for the report of a crash: "at 96000 Hz".
    void doing(const std::string& what) { lastCall_.setPhase(what); }
    LastCall& lastCall() { return lastCall_; }

    // From 0 to 1, both ends all but never.
    float uniform();
    // From `least` to `most`, both included.
    int number(int least, int most);
    std::mt19937_64& random() { return random_; }

private:
    std::filesystem::path file_;
    std::shared_ptr<const PluginModule> module_;
    CheckReport& report_;
    LastCall& lastCall_;
    std::mt19937_64 random_;
    std::atomic<bool> found_{false};
};

} // namespace tvhost
