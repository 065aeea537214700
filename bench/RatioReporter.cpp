#include "bench/RatioReporter.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr char kReference[] = "/reference";

std::string stemOf(const std::string& name) {
    return name.substr(0, name.rfind('/'));
}

} // namespace

bool RatioReporter::ReportContext(const Context& context) {
    std::printf("%d x %.0f MHz; the fastest of all repetitions\n\n", context.cpu_info.num_cpus,
                context.cpu_info.cycles_per_second / 1e6);
    std::printf("%-44s %12s %10s\n", "benchmark", "ns", "ratio");
    return true;
}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration || run.error_occurred) {
            continue;
        }
        const auto items = run.counters.find("items_per_second");
        const double ns =
            items != run.counters.end() ? 1e9 / items->second.value : run.GetAdjustedRealTime();
        std::string name = run.run_name.function_name;
        if (!run.run_name.args.empty()) {
            name += "/" + run.run_name.args;
        }
        names_[{run.family_index, run.per_family_instance_index}] = name;
        const auto known = fastest_.emplace(name, ns).first;
        known->second = std::min(known->second, ns);
    }
}

void RatioReporter::Finalize() {
    for (const auto& [place, name] : names_) {
        const auto reference = fastest_.find(stemOf(name) + kReference);
        if (reference == fastest_.end() || reference->first == name) {
            std::printf("%-44s %12.2f\n", name.c_str(), fastest_[name]);
        } else {
            std::printf("%-44s %12.2f %10.3f\n", name.c_str(), fastest_[name],
                        fastest_[name] / reference->second);
        }
    }
}

int runBenchmarks(int argc, char** argv, int repetitions) {
    std::vector<char*> arguments(argv, argv + argc);
    std::string repeat = "--benchmark_repetitions=" + std::to_string(repetitions);
    std::string interleave = "--benchmark_enable_random_interleaving=true";
    std::string minimum = "--benchmark_min_time=0.02";
    arguments.insert(arguments.begin() + 1, {repeat.data(), interleave.data(), minimum.data()});
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 2;
    }
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
