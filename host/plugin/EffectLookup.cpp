#include "host/plugin/EffectLookup.h"

#include "host/base/NumberText.h"
#include "host/base/PlainText.h"
#include "host/base/UserError.h"

#include <optional>
#include <vector>

namespace tvhost {

namespace {

constexpr std::size_t kListedNames = 32;

std::string listing(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size() && i < kListedNames; ++i) {
        text += (i == 0 ? "" : ", ") + names[i];
    }
    return names.size() > kListedNames ? text + ", ..." : text;
}

int find(const EffectInstance& effect, const char* kind, const std::vector<std::string>& names,
         const std::string& text) {
    if (names.empty()) {
        throw UserError(effect.name() + " has no " + kind + "s, so " + kind + " \"" + text +
                        "\" cannot be set");
    }
    const std::string wanted = plainText(text);
    std::optional<int> found;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (!equalWithoutCase(names[i], wanted)) {
            continue;
        }
        if (found) {
            throw UserError(effect.name() + " has several " + kind + "s called \"" + text +
                            "\"; give the number, " + std::to_string(*found) + " for the first");
        }
        found = static_cast<int>(i);
    }
    if (found) {
        return *found;
    }
    const auto number = parseWholeNumber(text);
    if (number && *number >= 0 && *number < static_cast<std::int64_t>(names.size())) {
        return static_cast<int>(*number);
    }
    throw UserError(effect.name() + " has no " + kind + " \"" + text +
                    "\"; give a number from 0 to " + std::to_string(names.size() - 1) +
                    " or a name: " + listing(names));
}

} // namespace

int findParameter(const EffectInstance& effect, const std::string& text) {
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(effect.parameterCount()));
    for (int i = 0; i < effect.parameterCount(); ++i) {
        names.push_back(effect.parameterName(i));
    }
    return find(effect, "parameter", names, text);
}

int findProgram(const EffectInstance& effect, const std::string& text) {
    return find(effect, "program", effect.programNames(), text);
}

} // namespace tvhost
