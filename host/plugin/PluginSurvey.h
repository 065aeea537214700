// What plug-ins say about themselves when each is asked in a process of its own.
#pragma once

#include "host/plugin/EditorSize.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace tvhost {

// One file's answer. Texts are plain, as plainText() leaves them.
struct SurveyedPlugin {
    std::filesystem::path file;
    bool isPlugin = false; // it exports the interface's entry
    std::string fault;     // why it cannot be used; the rest holds when this is empty
    std::string name;
    std::string vendor;
    std::string kind; // as kindOf()
    std::string uniqueId;
    int inputs = 0;
    int outputs = 0;
    bool hasEditor = false;
};

// Asks each file, `jobs` at a time, and answers in the order of `files`. One that crashes, hangs
// for longer than `timeLimit` or makes no effect has a fault. Only in a process with one thread.
std::vector<SurveyedPlugin> surveyPlugins(const std::vector<std::filesystem::path>& files,
                                          std::size_t jobs, std::chrono::milliseconds timeLimit);

// How large a plug-in says its editor to be while that is closed; not usable where it has none or
// doesn't say. Asked in a process of its own, since some need a display to know and crash without
// one. Only in a process with one thread.
EditorSize surveyEditorSize(const std::filesystem::path& file, std::chrono::milliseconds timeLimit);

// How long a plug-in may take to answer when nothing else is asked for.
constexpr std::chrono::seconds kUsualAnswerTime(10);

} // namespace tvhost
