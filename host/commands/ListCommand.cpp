#include "host/commands/ListCommand.h"

#include "host/base/NumberText.h"
#include "host/base/PlainText.h"
#include "host/base/TextTable.h"
#include "host/base/UserError.h"
#include "host/commands/JobsOption.h"
#include "host/plugin/PluginFolders.h"
#include "host/plugin/PluginSurvey.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <iostream>

namespace tvhost {

namespace fs = std::filesystem;

namespace {

constexpr double kLongestAnswer = 3600.0;

std::chrono::milliseconds timeLimitFrom(const std::string& text) {
    if (text.empty()) {
        return kUsualAnswerTime;
    }
    const auto seconds = parseNumber(text);
    if (!seconds || *seconds <= 0.0 || *seconds > kLongestAnswer) {
        throw UserError("--time-limit " + text + ": give a number of seconds above 0, at most " +
                        shortNumber(kLongestAnswer, 0));
    }
    return std::chrono::milliseconds(std::llround(std::ceil(*seconds * 1000.0)));
}

std::vector<fs::path> filesIn(const std::vector<std::string>& folders) {
    if (folders.empty()) {
        return pluginFiles();
    }
    std::vector<fs::path> files;
    for (const std::string& folder : folders) {
        std::error_code error;
        if (!fs::is_directory(folder, error)) {
            throw UserError("there is no folder " + folder + "; give one that holds plug-ins");
        }
        for (const fs::path& file : pluginFilesIn(fs::absolute(folder, error).lexically_normal())) {
            if (std::find(files.begin(), files.end(), file) == files.end()) {
                files.push_back(file);
            }
        }
    }
    return files;
}

bool comesBefore(const SurveyedPlugin& a, const SurveyedPlugin& b) {
    const auto key = [](const SurveyedPlugin& plugin) {
        std::string name = plugin.name;
        std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) {
            return static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
        });
        return std::make_pair(name, plugin.file);
    };
    return key(a) < key(b);
}

void printTable(const std::vector<SurveyedPlugin>& plugins) {
    TextTable table({false, false, false, true, true, false});
    TextTable faults({false, false});
    std::size_t faultCount = 0;
    table.add({"name", "maker", "kind", "in", "out", "file"});
    for (const SurveyedPlugin& plugin : plugins) {
        const std::string file = plainText(plugin.file.string());
        if (!plugin.fault.empty()) {
            faults.add({file, plugin.fault});
            ++faultCount;
            continue;
        }
        table.add({plugin.name, plugin.vendor.empty() ? "-" : plugin.vendor, plugin.kind,
                   std::to_string(plugin.inputs), std::to_string(plugin.outputs), file});
    }
    std::cout << "Plug-ins (" << plugins.size() - faultCount << ")\n";
    if (plugins.size() > faultCount) {
        std::cout << table.text();
    }
    if (faultCount > 0) {
        std::cout << "\nNot usable (" << faultCount << ")\n" << faults.text();
    }
}

void printJson(const std::vector<SurveyedPlugin>& plugins) {
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const SurveyedPlugin& plugin : plugins) {
        nlohmann::ordered_json entry;
        entry["file"] = plainText(plugin.file.string());
        if (!plugin.fault.empty()) {
            entry["fault"] = plugin.fault;
        } else {
            entry["name"] = plugin.name;
            entry["vendorName"] = plugin.vendor;
            entry["kind"] = plugin.kind;
            entry["uniqueId"] = plugin.uniqueId;
            entry["inputs"] = plugin.inputs;
            entry["outputs"] = plugin.outputs;
            entry["hasEditor"] = plugin.hasEditor;
        }
        list.push_back(entry);
    }
    std::cout << list.dump(2) << "\n";
}

} // namespace

CLI::App* ListCommand::declare(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("list", "List the plug-ins of this system");
    command
        ->add_option("FOLDER", folders_,
                     "Folder to look in, with all folders in it; without one those of VST_PATH, "
                     "LXVST_PATH, ~/.vst, ~/.lxvst, and vst and lxvst in /usr/local/lib and "
                     "/usr/lib")
        ->type_name("");
    command->add_flag("--json", json_, "Print JSON, with keys that stay from version to version");
    declareJobs(*command, jobs_, "Plug-ins asked at a time");
    command
        ->add_option("--time-limit", timeLimit_,
                     "How long a plug-in may take to answer; 10 without")
        ->type_name("SECONDS");
    command->footer("Each plug-in is asked in a process of its own, so that one that crashes or\n"
                    "hangs is a line and not the end.\n"
                    "\n"
                    "  tvhost list\n"
                    "  tvhost render in.wav out.wav --plugin \"Name in the list\"");
    return command;
}

void ListCommand::run() {
    const std::size_t jobs = jobsFrom(jobs_);
    const std::chrono::milliseconds timeLimit = timeLimitFrom(timeLimit_);
    std::vector<SurveyedPlugin> plugins = surveyPlugins(filesIn(folders_), jobs, timeLimit);
    plugins.erase(std::remove_if(plugins.begin(), plugins.end(),
                                 [](const SurveyedPlugin& plugin) { return !plugin.isPlugin; }),
                  plugins.end());
    std::sort(plugins.begin(), plugins.end(), comesBefore);
    if (json_) {
        printJson(plugins);
    } else {
        printTable(plugins);
    }
    if (plugins.empty()) {
        std::string places;
        for (const std::string& folder : folders_) {
            places += (places.empty() ? "" : ", ") + folder;
        }
        std::fprintf(stderr, "tvhost: warning: there are no VST 2 plug-ins in %s\n",
                     plainText(folders_.empty() ? pluginFolderNames() : places).c_str());
    }
}

} // namespace tvhost
