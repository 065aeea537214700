#include "host/commands/JobsOption.h"

#include "host/base/ForkedWork.h"
#include "host/base/NumberText.h"
#include "host/base/UserError.h"

namespace tvhost {

namespace {

constexpr std::int64_t kMostJobs = 256;

} // namespace

void declareJobs(CLI::App& command, std::string& given, const std::string& what) {
    command
        .add_option("--jobs", given,
                    what + ", 1 to " + std::to_string(kMostJobs) +
                        "; without it as many as the machine has processors")
        ->type_name("N");
}

std::size_t jobsFrom(const std::string& given) {
    if (given.empty()) {
        return usualJobs();
    }
    const auto jobs = parseWholeNumber(given);
    if (!jobs || *jobs < 1 || *jobs > kMostJobs) {
        throw UserError("--jobs " + given + ": give a whole number from 1 to " +
                        std::to_string(kMostJobs));
    }
    return static_cast<std::size_t>(*jobs);
}

} // namespace tvhost
