#include "host/check/CheckSession.h"

#include "host/base/UserError.h"
#include "host/check/RealTimeWatch.h"
#include "host/window/VirtualDisplay.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include <poll.h>

namespace tvhost {

namespace {

constexpr int kLongestWait = 50; // ms

void wait(const std::vector<const CheckProcess*>& processes) {
    std::vector<pollfd> descriptors;
    for (const CheckProcess* const process : processes) {
        for (const int descriptor : process->descriptors()) {
            descriptors.push_back({descriptor, POLLIN, 0});
        }
    }
    poll(descriptors.data(), descriptors.size(), kLongestWait);
}

} // namespace

CheckSession::CheckSession(Plan plan)
    : plan_(std::move(plan)), name_(plan_.plugin.stem().string()) {
    ask();
}

void CheckSession::ask() {
    CheckProcess process({plan_.plugin, "", plan_.seed, {}}, plan_.limit);
    while (process.advance()) {
        wait({&process});
    }
    const CheckOutcome& outcome = process.outcome();
    if (!outcome.refused.empty()) {
        throw UserError(outcome.refused);
    }
    // A plug-in that crashes here goes on to the checks, which say so.
    if (outcome.answer.is_object()) {
        name_ = outcome.answer.value("name", name_);
        uniqueId_ = outcome.answer.value("uniqueId", 0);
        hasEditor_ = outcome.answer.value("hasEditor", false);
    }
}

void CheckSession::run(const std::function<void(const CheckResult&)>& take) {
    std::optional<VirtualDisplay> display;
    const auto needsDisplay = [](const Check* check) { return check->needsDisplay; };
    if (hasEditor_ && std::any_of(plan_.checks.begin(), plan_.checks.end(), needsDisplay)) {
        display.emplace();
    }

    struct Job {
        const Check* check;
        std::unique_ptr<CheckProcess> process; // null before it begins and once it is judged
        std::optional<CheckResult> result;
    };
    std::vector<Job> jobs;
    jobs.reserve(plan_.checks.size());
    for (const Check* const check : plan_.checks) {
        jobs.push_back({check, nullptr, std::nullopt});
    }
    std::size_t begun = 0;
    std::size_t taken = 0;
    while (taken < jobs.size()) {
        std::vector<const CheckProcess*> running;
        for (std::size_t i = taken; i < begun; ++i) {
            Job& job = jobs[i];
            if (job.process && !job.process->advance()) {
                job.result = judged(*job.check, job.process->outcome());
                job.process.reset();
            }
            if (job.process) {
                running.push_back(job.process.get());
            }
        }
        while (begun < jobs.size() && running.size() < static_cast<std::size_t>(plan_.jobs)) {
            Job& job = jobs[begun++];
            const bool watched = job.check->needsWatch || job.check->guardsMemory;
            job.process = std::make_unique<CheckProcess>(
                CheckProcess::Order{plan_.plugin, job.check->name, plan_.seed,
                                    watched ? RealTimeWatch::library() : std::filesystem::path(),
                                    job.check->guardsMemory},
                plan_.limit);
            running.push_back(job.process.get());
        }
        for (; taken < begun; ++taken) {
            const auto& result = jobs[taken].result;
            if (!result) {
                break;
            }
            take(*result);
        }
        if (!running.empty()) {
            wait(running);
        }
    }
}

CheckResult CheckSession::judged(const Check& check, const CheckOutcome& outcome) const {
    CheckResult result;
    result.check = &check;
    result.skipped = outcome.skipped;
    result.seconds = outcome.seconds;
    std::vector<CheckFinding> findings = outcome.findings;
    if (!outcome.refused.empty()) {
        findings.push_back({"refused", outcome.refused});
    }
    for (CheckFinding& finding : findings) {
        const KnownBehaviour* const known = known_.find(uniqueId_, check.name, finding);
        if (known) {
            result.remarks.push_back({std::move(finding), *known});
        } else {
            result.findings.push_back(std::move(finding));
        }
    }
    if (!result.findings.empty() || !result.remarks.empty()) {
        result.skipped.clear();
    }
    return result;
}

} // namespace tvhost
