// Several sounds through an effect, each in a process of its own.
#pragma once

#include "host/commands/RenderJob.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tvhost {

// Renders each input into a folder, under the input's own name.
class RenderBatch {
public:
    // Throws UserError when there is no such folder, two inputs would be written under one name, or
    // the plug-in cannot be found; nothing is written then.
    RenderBatch(const RenderOrder& order, const std::vector<std::string>& inputs,
                const std::string& folder);

    // Renders all, `jobs` at a time, and tells of each as it ends: what was written on standard
    // output, faults and warnings on standard error. Answers whether all went well. Only in a
    // process with one thread.
    bool run(std::size_t jobs) const;

private:
    struct Task {
        std::string input;
        std::string output;
    };

    RenderOrder order_;
    std::vector<Task> tasks_;
};

} // namespace tvhost
