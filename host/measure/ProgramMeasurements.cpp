#include "host/measure/ProgramMeasurements.h"

#include "host/base/ForkedWork.h"
#include "host/base/UserError.h"
#include "host/plugin/EffectInstance.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace tvhost {

using nlohmann::json;

namespace {

// How many wait for their turn at the most.
std::size_t groupSize() {
    return 2 * usualJobs();
}

std::string answerOf(const ForkedAnswer& answer, const std::string& whose) {
    if (answer.end == ForkedAnswer::End::kAnswered) {
        return answer.text;
    }
    throw UserError(answer.end == ForkedAnswer::End::kRefused ? answer.text
                                                              : whose + " " + answer.fault());
}

} // namespace

ProgramMeasurements::ProgramMeasurements(Load load, EffectSettings settings, double longestGap)
    : load_(std::move(load)), settings_(std::move(settings)), longestGap_(longestGap) {
    const auto ask = [this](std::size_t) -> ForkedResult {
        const auto effect = std::make_shared<EffectInstance>(load_());
        std::string text;
        json::to_cbor(json::array({effect->name(), effect->programCount()}), text);
        return {text, effect};
    };
    runForked(1, {}, ask, [this](std::size_t, const ForkedAnswer& answer) {
        const json told = json::from_cbor(answerOf(answer, "the plug-in"));
        effect_ = told.at(0);
        count_ = told.at(1);
    });
    if (count_ == 0) {
        throw UserError(effect_ + " has no programs; leave out --all");
    }
}

void ProgramMeasurements::each(const Take& take) const {
    ForkedTerms terms;
    terms.jobs = usualJobs();
    const auto all = static_cast<std::size_t>(count_);
    for (std::size_t first = 0; first < all; first += groupSize()) {
        std::vector<std::string> group(std::min(groupSize(), all - first));
        const auto measure = [&](std::size_t i) -> ForkedResult {
            EffectSettings settings = settings_;
            settings.program = std::to_string(first + i);
            return EffectMeasurement(load_(), settings, longestGap_).packed();
        };
        runForked(group.size(), terms, measure, [&](std::size_t i, const ForkedAnswer& answer) {
            group[i] = answerOf(answer, effect_ + ", in program " + std::to_string(first + i));
        });
        for (std::size_t i = 0; i < group.size(); ++i) {
            take(static_cast<int>(first + i), EffectMeasurement(group[i]));
        }
    }
}

} // namespace tvhost
