// What a command line says an effect is to be set to.
#pragma once

#include "host/plugin/EffectInstance.h"

#include <string>
#include <vector>

namespace tvhost {

// What a command line says an effect is to be set to: a program, then a preset, then single
// parameters in the order given.
struct EffectSettings {
    std::string program;           // number or name; empty leaves the effect's own
    std::vector<std::string> sets; // NAME=VALUE
    std::string preset = {};       // path of a preset file; empty for none
    std::string tempo = {};        // beats per minute; empty leaves the host's own

    // Throws UserError when something cannot be had; the effect may then be half set.
    void apply(EffectInstance& effect) const;
};

// A normalised value as written in `text`, which `where` names in the message. Throws UserError for
// anything but a number from 0 to 1.
float normalisedValue(const std::string& text, const std::string& where);

} // namespace tvhost
