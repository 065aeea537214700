// Prints what benchmarks took per frame, and beside each the same work done by a plain reference.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

// Benchmarks named "REST/reference" are what those named "REST/WHO" are compared with, within one
// run. Of repetitions the fastest counts: on a shared machine everything else only adds.
class RatioReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    // Where a benchmark stands among the registered ones.
    using Place = std::pair<std::int64_t, std::int64_t>;

    std::map<Place, std::string> names_;
    std::map<std::string, double> fastest_; // nanoseconds per item, or per iteration without items
};

// Runs what is registered, with `repetitions` unless the command line says otherwise. Returns the
// exit status.
int runBenchmarks(int argc, char** argv, int repetitions);
