// Runs of tvhost check on the plug-ins built from plugins/.
#pragma once

#include "tests/host/Tvhost.h"

#include <nlohmann/json.hpp>

#include <set>
#include <string>
#include <vector>

inline std::string checkedPlugin(const std::string& name) {
    return std::string(CHECKED_PLUGINS "/") + name + ".so";
}

// What `tvhost check PLUGIN --json` and `more` print.
inline nlohmann::json checkAsJson(const std::string& plugin, std::vector<std::string> more) {
    more.insert(more.begin(), {"check", plugin, "--json"});
    const ProcessResult result = runTvhost(more);
    return nlohmann::json::parse(result.out, nullptr, false);
}

// The names of the checks that found something.
inline std::set<std::string> failedChecks(const nlohmann::json& result) {
    std::set<std::string> names;
    for (const nlohmann::json& check : result.at("checks")) {
        if (check.at("outcome") == "failed") {
            names.insert(check.at("name").get<std::string>());
        }
    }
    return names;
}
