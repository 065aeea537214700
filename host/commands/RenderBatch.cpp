#include "host/commands/RenderBatch.h"

#include "host/base/ForkedWork.h"
#include "host/base/PlainText.h"
#include "host/base/StartFolder.h"
#include "host/base/UserError.h"
#include "host/render/SoundFormat.h"
#include "host/render/StandardStreams.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <filesystem>
#include <iostream>
#include <map>
#include <optional>
#include <system_error>
#include <utility>

#include <sys/stat.h>

namespace tvhost {

namespace fs = std::filesystem;

namespace {

using nlohmann::json;

// A line about one of several files names it.
void say(const std::string& kind, const std::string& input, const std::string& text) {
    const std::string whole = text.find(input) == std::string::npos ? input + ": " + text : text;
    std::fprintf(stderr, "tvhost: %s%s\n", kind.c_str(), plainText(whole).c_str());
}

// What tells a file from one that takes its place; nothing where there is none.
std::optional<std::pair<dev_t, ino_t>> identity(const std::string& path) {
    struct stat status = {};
    return stat(fromStartFolder(path).c_str(), &status) == 0
               ? std::make_optional(std::make_pair(status.st_dev, status.st_ino))
               : std::nullopt;
}

} // namespace

RenderBatch::RenderBatch(const RenderOrder& order, const std::vector<std::string>& inputs,
                         const std::string& folder)
    : order_(order) {
    std::error_code error;
    if (!fs::is_directory(fromStartFolder(folder), error)) {
        throw UserError("--out-folder " + folder +
                        ": there is no such folder; make it, or give "
                        "one that is there");
    }
    std::map<fs::path, std::string> writers;
    for (const std::string& input : inputs) {
        if (isStandardStream(input)) {
            throw UserError("standard input has no name to write under in " + folder +
                            "; give files, or IN and OUT without --out-folder");
        }
        const std::string output = (fs::path(folder) / fs::path(input).filename()).string();
        SoundFormat::requireKnownExtension(output);
        // Links may lead two names to one file.
        const fs::path place = fs::weakly_canonical(fromStartFolder(output), error);
        const auto [writer, isNew] = writers.emplace(place, input);
        if (!isNew) {
            throw UserError(writer->second + " and " + input + " would both be written to " +
                            output + "; give them other names or render them apart");
        }
        tasks_.push_back({input, output});
    }
    // Looked for once, and refused once.
    order_.effect.plugin = pluginPath(order_.effect.plugin).string();
}

bool RenderBatch::run(std::size_t jobs) const {
    ForkedTerms terms;
    terms.jobs = jobs;
    terms.silent = true;
    bool allWell = true;
    std::vector<std::optional<std::pair<dev_t, ino_t>>> before;
    before.reserve(tasks_.size());
    for (const Task& task : tasks_) {
        before.push_back(identity(task.output));
    }
    const auto work = [this](std::size_t i) {
        std::string told;
        renderSound(order_, tasks_[i].input, tasks_[i].output, [&](const RenderOutcome& outcome) {
            told = json{{"summary", outcome.summary}, {"warnings", outcome.warnings}}.dump(
                -1, ' ', false, json::error_handler_t::replace);
        });
        return told;
    };
    const auto tell = [&](std::size_t i, const ForkedAnswer& answer) {
        if (answer.end != ForkedAnswer::End::kAnswered) {
            allWell = false;
            const bool written = identity(tasks_[i].output) != before[i];
            say("", tasks_[i].input,
                answer.fault() + (written ? ", after " + tasks_[i].output + " was written" : ""));
            return;
        }
        const json told = json::parse(answer.text);
        for (const json& warning : told.at("warnings")) {
            say("warning: ", tasks_[i].input, warning);
        }
        std::cout << told.at("summary").get<std::string>() << "\n" << std::flush;
    };
    runForked(tasks_.size(), terms, work, tell);
    return allWell;
}

} // namespace tvhost
