// How the results of checks are written, for people and for programs.
#pragma once

#include "host/check/CheckSession.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace tvhost {

// The command that runs this check again in the same way, for a shell.
std::string replayCommand(const CheckSession::Plan& plan, const Check& check);

// Some lines on one result, each ended.
std::string describeResult(const CheckSession::Plan& plan, const CheckResult& result);

// One line on all of them.
std::string summary(const std::vector<CheckResult>& results);

nlohmann::ordered_json resultsAsJson(const std::string& name, const CheckSession::Plan& plan,
                                     const std::vector<CheckResult>& results);

} // namespace tvhost
