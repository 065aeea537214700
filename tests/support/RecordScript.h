// An effect behind its record, and the model beside it, through one script.
#pragma once

#include "plugin/vst2/AEffect.h"
#include "tests/support/ReferenceDelay.h"
#include "tests/support/ScriptGenerator.h"

#include <cstddef>
#include <string>
#include <vector>

// Knows nothing of the instance but its record, so that it can be of any build. The instance is new
// at the start, and stays the caller's.
class RecordScript {
public:
    RecordScript(AEffect* record, std::vector<ScriptStep> script);

    bool ended() const { return next_ == script_.size(); }

    // Does one step. Empty when samples, parameters and the current program are the model's, bit
    // for bit, not-a-numbers being all alike; otherwise what differs first. Must not have ended.
    std::string step();

    // All steps that are left, up to the first difference.
    std::string run();

private:
    std::string act(const ScriptStep& step);
    std::string process(const ScriptStep& step);
    std::string stateDifference() const;

    AEffect* record_;
    std::vector<ScriptStep> script_;
    std::size_t next_ = 0;
    ReferenceDelay model_;
};
