#include "host/check/CheckText.h"

#include <algorithm>
#include <cstdio>
#include <map>

namespace tvhost {

namespace {

constexpr std::size_t kMostOfATopic = 5; // lines on findings of one kind
constexpr const char* kIndent = "      ";

// As a shell takes it for one word.
std::string quoted(const std::string& text) {
    const auto isPlain = [](unsigned char c) {
        return std::isalnum(c) ||
               std::string_view("/._-+,:=@").find(static_cast<char>(c)) != std::string_view::npos;
    };
    if (!text.empty() && std::all_of(text.begin(), text.end(), isPlain)) {
        return text;
    }
    std::string result = "'";
    for (const char character : text) {
        result += character == '\'' ? std::string("'\\''") : std::string(1, character);
    }
    return result + "'";
}

std::string headLine(const Check& check, const std::string& outcome) {
    char line[64];
    std::snprintf(line, sizeof line, "%2d  %-27s ", check.level, check.name);
    return line + outcome + "\n";
}

// The findings of each topic in the order of their first, long rows cut.
std::string listed(const std::vector<CheckFinding>& findings) {
    std::map<std::string, std::size_t> counts;
    for (const CheckFinding& finding : findings) {
        ++counts[finding.topic];
    }
    std::map<std::string, std::size_t> shown;
    std::string text;
    for (const CheckFinding& finding : findings) {
        const std::size_t number = ++shown[finding.topic];
        if (number <= kMostOfATopic) {
            text += kIndent + finding.text + "\n";
        } else if (number == counts[finding.topic]) {
            text += kIndent + std::string("and ") + std::to_string(number - kMostOfATopic) +
                    " more of this kind\n";
        }
    }
    return text;
}

std::string describeRemarks(const std::vector<CheckRemark>& remarks) {
    std::vector<KnownBehaviour> behaviours;
    for (const CheckRemark& remark : remarks) {
        const auto same = [&](const KnownBehaviour& other) {
            return other.name == remark.behaviour.name;
        };
        if (std::none_of(behaviours.begin(), behaviours.end(), same)) {
            behaviours.push_back(remark.behaviour);
        }
    }
    std::string text;
    for (const KnownBehaviour& behaviour : behaviours) {
        std::vector<CheckFinding> findings;
        for (const CheckRemark& remark : remarks) {
            if (remark.behaviour.name == behaviour.name) {
                findings.push_back(remark.finding);
            }
        }
        text += kIndent + std::string("Known as ") + behaviour.name + ": " + behaviour.reason +
                "\n" + listed(findings);
    }
    return text;
}

nlohmann::ordered_json findingAsJson(const CheckFinding& finding) {
    return {{"topic", finding.topic}, {"text", finding.text}};
}

} // namespace

std::string replayCommand(const CheckSession::Plan& plan, const Check& check) {
    return "tvhost check " + quoted(plan.plugin.string()) + " --only " + check.name + " --seed " +
           std::to_string(plan.seed);
}

std::string describeResult(const CheckSession::Plan& plan, const CheckResult& result) {
    const Check& check = *result.check;
    if (!result.skipped.empty()) {
        return headLine(check, "not for this plug-in: " + result.skipped);
    }
    const std::string remarks = describeRemarks(result.remarks);
    if (result.hasPassed()) {
        const std::size_t count = result.remarks.size();
        return headLine(check, count == 0 ? "passed"
                                          : "passed, with " + std::to_string(count) +
                                                (count == 1 ? " remark" : " remarks")) +
               remarks;
    }
    return headLine(check, "FAILED") + kIndent + check.protects + "\n" + listed(result.findings) +
           remarks + kIndent + "Again: " + replayCommand(plan, check) + "\n";
}

std::string summary(const std::vector<CheckResult>& results) {
    int passed = 0;
    int remarked = 0;
    int failed = 0;
    int skipped = 0;
    for (const CheckResult& result : results) {
        passed += result.hasPassed() ? 1 : 0;
        remarked += result.hasPassed() && !result.remarks.empty() ? 1 : 0;
        skipped += result.skipped.empty() ? 0 : 1;
        failed += result.findings.empty() ? 0 : 1;
    }
    std::string text = std::to_string(results.size()) +
                       (results.size() == 1 ? " check: " : " checks: ") + std::to_string(passed) +
                       " passed";
    if (remarked > 0) {
        text += " (" + std::to_string(remarked) + " with remarks)";
    }
    text += ", " + std::to_string(failed) + " failed";
    if (skipped > 0) {
        text += ", " + std::to_string(skipped) + " not for this plug-in";
    }
    return text + "\n";
}

nlohmann::ordered_json resultsAsJson(const std::string& name, const CheckSession::Plan& plan,
                                     const std::vector<CheckResult>& results) {
    using Json = nlohmann::ordered_json;
    Json checks = Json::array();
    bool allPassed = true;
    for (const CheckResult& result : results) {
        const char* const outcome = !result.skipped.empty()   ? "skipped"
                                    : result.findings.empty() ? "passed"
                                                              : "failed";
        Json item{{"name", result.check->name},
                  {"level", result.check->level},
                  {"protects", result.check->protects},
                  {"outcome", outcome},
                  {"seconds", result.seconds}};
        if (!result.skipped.empty()) {
            item["reason"] = result.skipped;
        }
        item["findings"] = Json::array();
        for (const CheckFinding& finding : result.findings) {
            item["findings"].push_back(findingAsJson(finding));
        }
        item["remarks"] = Json::array();
        for (const CheckRemark& remark : result.remarks) {
            Json entry = findingAsJson(remark.finding);
            entry["behaviour"] = remark.behaviour.name;
            entry["reason"] = remark.behaviour.reason;
            item["remarks"].push_back(entry);
        }
        if (!result.findings.empty()) {
            allPassed = false;
            item["replay"] = replayCommand(plan, *result.check);
        }
        checks.push_back(item);
    }
    return {{"plugin", name},
            {"file", plan.plugin.string()},
            {"seed", plan.seed},
            {"passed", allPassed},
            {"checks", checks}};
}

} // namespace tvhost
