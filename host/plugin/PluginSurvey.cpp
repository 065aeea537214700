#include "host/plugin/PluginSurvey.h"

#include "host/base/ForkedWork.h"
#include "host/base/PlainText.h"
#include "host/plugin/EffectDescription.h"
#include "host/plugin/EffectInstance.h"

#include <nlohmann/json.hpp>

#include <memory>

namespace tvhost {

namespace {

using nlohmann::json;

// Runs beside the plug-in: loads it and tells what it is.
ForkedResult ask(const std::filesystem::path& file) {
    json answer;
    std::shared_ptr<const PluginModule> module;
    try {
        module = std::make_shared<const PluginModule>(file);
    } catch (const PluginModule::NoEntry&) {
        answer["isPlugin"] = false;
        return answer.dump();
    }
    // Some do themselves harm as they close, which is no reason not to list them.
    const auto made = std::make_shared<EffectInstance>(module);
    const EffectInstance& effect = *made;
    answer["isPlugin"] = true;
    answer["name"] = effect.name();
    answer["vendor"] = effect.vendorName();
    answer["kind"] = kindOf(effect);
    answer["uniqueId"] = uniqueIdText(effect.record().uniqueID);
    answer["inputs"] = effect.inputCount();
    answer["outputs"] = effect.outputCount();
    answer["hasEditor"] = effect.hasEditor();
    return {answer.dump(), made};
}

// `text` without the file's name, which stands beside it.
std::string withoutFile(std::string text, const std::filesystem::path& file) {
    for (const std::string& name : {std::filesystem::absolute(file).string() + " ",
                                    std::filesystem::absolute(file).string() + ": "}) {
        for (std::size_t at; (at = text.find(name)) != std::string::npos;) {
            text.erase(at, name.size());
        }
    }
    return plainText(text);
}

SurveyedPlugin take(const std::filesystem::path& file, const ForkedAnswer& answer) {
    SurveyedPlugin plugin;
    plugin.file = file;
    if (answer.end != ForkedAnswer::End::kAnswered) {
        plugin.isPlugin = true;
        plugin.fault = withoutFile(answer.fault(), file);
        return plugin;
    }
    const json told = json::parse(answer.text);
    plugin.isPlugin = told.at("isPlugin");
    if (plugin.isPlugin) {
        plugin.name = told.at("name");
        plugin.vendor = told.at("vendor");
        plugin.kind = told.at("kind");
        plugin.uniqueId = told.at("uniqueId");
        plugin.inputs = told.at("inputs");
        plugin.outputs = told.at("outputs");
        plugin.hasEditor = told.at("hasEditor");
    }
    return plugin;
}

} // namespace

std::vector<SurveyedPlugin> surveyPlugins(const std::vector<std::filesystem::path>& files,
                                          std::size_t jobs, std::chrono::milliseconds timeLimit) {
    std::vector<SurveyedPlugin> plugins(files.size());
    ForkedTerms terms;
    terms.jobs = jobs;
    terms.timeLimit = timeLimit;
    terms.silent = true;
    runForked(
        files.size(), terms, [&](std::size_t i) { return ask(files[i]); },
        [&](std::size_t i, const ForkedAnswer& answer) { plugins[i] = take(files[i], answer); });
    return plugins;
}

EditorSize surveyEditorSize(const std::filesystem::path& file,
                            std::chrono::milliseconds timeLimit) {
    ForkedTerms terms;
    terms.timeLimit = timeLimit;
    terms.silent = true;
    EditorSize size;
    const auto work = [&](std::size_t) -> ForkedResult {
        const auto effect =
            std::make_shared<EffectInstance>(std::make_shared<const PluginModule>(file));
        const EditorSize told = effect->hasEditor() ? effect->editorSize() : EditorSize{};
        return {json{told.width, told.height}.dump(), effect};
    };
    runForked(1, terms, work, [&](std::size_t, const ForkedAnswer& answer) {
        if (answer.end == ForkedAnswer::End::kAnswered) {
            const json told = json::parse(answer.text);
            size = {told.at(0), told.at(1)};
        }
    });
    return size;
}

} // namespace tvhost
