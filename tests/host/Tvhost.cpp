#include "tests/host/Tvhost.h"

Process startTvhost(const std::vector<std::string>& arguments, const Process::Options& options) {
    Process::Options whole = options;
    whole.environment = {
        "VST_PATH", "LXVST_PATH", "DISPLAY", "HOME=/nonexistent",
        // What is settled to be kept to the end of the process is no fault.
        ("LSAN_OPTIONS=suppressions=" TVHOST_LEAK_SUPPRESSIONS ":print_suppressions=0")};
    whole.environment.insert(whole.environment.end(), options.environment.begin(),
                             options.environment.end());
    return Process(TVHOST_PROGRAM, arguments, whole);
}

ProcessResult runTvhost(const std::vector<std::string>& arguments,
                        const Process::Options& options) {
    return startTvhost(arguments, options).wait();
}
