#include "host/commands/CheckCommand.h"

#include "host/base/UserError.h"
#include "host/check/CheckChild.h"
#include "host/check/CheckTable.h"
#include "host/check/CheckText.h"
#include "host/plugin/PluginPath.h"

#include <algorithm>
#include <iostream>
#include <random>
#include <thread>

namespace tvhost {

namespace {

constexpr int kMostJobs = 64;
constexpr std::int64_t kHighestSeed = 4294967295;
constexpr int kLongestLimit = 3600; // s
constexpr int kStatusOfFindings = 1;

std::int64_t freshSeed() {
    // Short enough to be typed.
    return std::random_device()() % 1000000;
}

} // namespace

CLI::App* CheckCommand::declare(CLI::App& app) {
    CLI::App* const command =
        app.add_subcommand("check", "Look for what hosts would suffer from in a plug-in");
    command
        ->add_option("PLUGIN", plugin_,
                     "VST 2 bundle or .so; without it TvDelay.vst beside tvhost or in VST_PATH, "
                     "~/.vst, /usr/local/lib/vst, /usr/lib/vst")
        ->type_name("");
    command
        ->add_option("--level", level_,
                     "Run the checks up to this level, from 1, what every host needs, to 10; 5 "
                     "without it")
        ->check(CLI::Range(1, kHighestCheckLevel))
        ->type_name("1..10");
    command->add_option("--only", only_, "Run the one check of this name, whatever its level")
        ->type_name("NAME");
    seedOption_ =
        command
            ->add_option("--seed", seed_,
                         "Draw the same random settings and sounds again; a new seed without it")
            ->check(CLI::Range(std::int64_t{0}, kHighestSeed))
            ->type_name("N");
    jobs_ = std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, kMostJobs);
    command
        ->add_option("--jobs", jobs_, "Checks to run at a time; as many as processors without it")
        ->check(CLI::Range(1, kMostJobs))
        ->type_name("N");
    command
        ->add_option("--time-limit", limit_,
                     "Seconds after which a check that is not ready has failed; 60 without it")
        ->check(CLI::Range(1, kLongestLimit))
        ->type_name("SECONDS");
    command->add_flag("--list", list_, "Print all checks and what each protects, and run none");
    command->add_flag("--json", json_, "Print JSON, with keys that stay from version to version");
    command->add_flag(kCheckChildOption, asChild_)->group("");
    command->footer("The status is 0 when all checks pass, 1 when one finds something and 2 when "
                    "nothing can be run.\n"
                    "\n"
                    "The checks, with their levels:\n" +
                    listChecks());
    return command;
}

CheckSession::Plan CheckCommand::plan() const {
    CheckSession::Plan plan;
    for (const Check& check : allChecks()) {
        if (only_.empty() ? check.level <= level_ : check.name == only_) {
            plan.checks.push_back(&check);
        }
    }
    if (plan.checks.empty()) {
        throw UserError("there is no check \"" + only_ +
                        "\"; give one that 'tvhost check --list' shows");
    }
    plan.plugin = pluginPath(plugin_);
    plan.seed = static_cast<std::uint64_t>(seed_);
    plan.jobs = jobs_;
    plan.limit = std::chrono::seconds(limit_);
    return plan;
}

void CheckCommand::run() {
    if (asChild_) {
        runCheckChild(plugin_, only_, static_cast<std::uint64_t>(seed_));
    }
    if (list_) {
        std::cout << listChecks();
        return;
    }
    if (seedOption_->count() == 0) {
        seed_ = freshSeed();
    }
    const CheckSession::Plan planned = plan();
    CheckSession session(planned);
    if (!json_) {
        std::cout << session.pluginName() << ", seed " << planned.seed << ": "
                  << planned.plugin.string() << "\n"
                  << std::flush;
    }
    std::vector<CheckResult> results;
    session.run([&](const CheckResult& result) {
        results.push_back(result);
        if (!json_) {
            std::cout << describeResult(planned, result) << std::flush;
        }
    });
    if (json_) {
        std::cout << resultsAsJson(session.pluginName(), planned, results).dump(2) << "\n";
    } else {
        std::cout << summary(results);
    }
    const bool found = std::any_of(results.begin(), results.end(), [](const CheckResult& result) {
        return !result.findings.empty();
    });
    status_ = found ? kStatusOfFindings : 0;
}

} // namespace tvhost
