// What certain plug-ins are known to do and to keep, so that a check says it without failing.
#pragma once

#include "host/check/CheckProcess.h"

#include <cstdint>
#include <regex>
#include <string>
#include <vector>

namespace tvhost {

// A behaviour that is meant to stay. Its name and reason are shown with what was found.
struct KnownBehaviour {
    std::string name;
    std::string reason;
};

// Read from KnownBehaviours.json, which is built into this program.
class KnownBehaviours {
public:
    KnownBehaviours();

    // The behaviour that the finding of a check shows, null when there is none of this plug-in's.
    const KnownBehaviour* find(std::int32_t uniqueId, const std::string& check,
                               const CheckFinding& finding) const;

private:
    struct Meeting {
        std::string check;
        std::string topic;
        std::regex text;
    };
    struct Entry {
        std::int32_t uniqueId = 0;
        KnownBehaviour behaviour;
        std::vector<Meeting> meetings;
    };

    std::vector<Entry> entries_;
};

} // namespace tvhost
