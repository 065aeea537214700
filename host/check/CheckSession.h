// Runs checks of one plug-in, several at a time, and judges what came of them.
#pragma once

#include "host/check/Check.h"
#include "host/check/CheckProcess.h"
#include "host/check/KnownBehaviours.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace tvhost {

struct CheckRemark {
    CheckFinding finding;
    KnownBehaviour behaviour;
};

// What one check came to.
struct CheckResult {
    const Check* check = nullptr;
    std::vector<CheckFinding> findings;
    std::vector<CheckRemark> remarks; // findings that are known behaviours
    std::string skipped;              // the reason; empty when it ran
    double seconds = 0.0;

    bool hasPassed() const { return findings.empty() && skipped.empty(); }
};

class CheckSession {
public:
    struct Plan {
        std::filesystem::path plugin;
        std::vector<const Check*> checks;
        std::uint64_t seed = 0;
        int jobs = 1;
        std::chrono::seconds limit{60}; // for each check
    };

    explicit CheckSession(Plan plan);

    // What the plug-in calls itself, or its file's name when it didn't come that far.
    const std::string& pluginName() const { return name_; }

    // Hands over each result in the order of the plan, as soon as it and all before it are there.
    // Throws UserError when the plug-in can't be run or there is no display for its editor.
    void run(const std::function<void(const CheckResult&)>& take);

private:
    void ask();
    CheckResult judged(const Check& check, const CheckOutcome& outcome) const;

    Plan plan_;
    KnownBehaviours known_;
    std::string name_;
    std::int32_t uniqueId_ = 0;
    bool hasEditor_ = false;
};

} // namespace tvhost
