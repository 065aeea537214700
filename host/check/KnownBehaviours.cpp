#include "host/check/KnownBehaviours.h"

#include "plugin/vst2/AEffect.h"

#include <nlohmann/json.hpp>

#include <string_view>

namespace tvhost {

// From KnownBehaviours.json by the build.
extern const std::string_view kKnownBehavioursJson;

KnownBehaviours::KnownBehaviours() {
    for (const nlohmann::json& item : nlohmann::json::parse(kKnownBehavioursJson)) {
        Entry entry;
        const auto id = item.at("plugin").get<std::string>();
        entry.uniqueId = packFourCharacters(id.at(0), id.at(1), id.at(2), id.at(3));
        entry.behaviour = {item.at("behaviour"), item.at("reason")};
        for (const nlohmann::json& meeting : item.at("met by")) {
            entry.meetings.push_back({meeting.at("check"), meeting.at("topic"),
                                      std::regex(meeting.value("text", std::string(".*")))});
        }
        entries_.push_back(std::move(entry));
    }
}

const KnownBehaviour* KnownBehaviours::find(std::int32_t uniqueId, const std::string& check,
                                            const CheckFinding& finding) const {
    for (const Entry& entry : entries_) {
        if (entry.uniqueId != uniqueId) {
            continue;
        }
        for (const Meeting& meeting : entry.meetings) {
            if (meeting.check == check && meeting.topic == finding.topic &&
                std::regex_search(finding.text, meeting.text)) {
                return &entry.behaviour;
            }
        }
    }
    return nullptr;
}

} // namespace tvhost
