// tvhost itself, run by tests.
#pragma once

#include "tests/support/Process.h"

#include <string>
#include <vector>

// There is no VST_PATH, no LXVST_PATH and no display, and HOME leads nowhere, unless `options` says
// otherwise.
Process startTvhost(const std::vector<std::string>& arguments,
                    const Process::Options& options = {});

// Runs tvhost to its end.
ProcessResult runTvhost(const std::vector<std::string>& arguments,
                        const Process::Options& options = {});
