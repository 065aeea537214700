// One sound through an effect into another.
#pragma once

#include "host/commands/EffectOptions.h"
#include "host/render/RawFormat.h"
#include "host/render/Renderer.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tvhost {

// How sounds are to be rendered.
struct RenderOrder {
    EffectOptions effect;
    std::vector<std::string> automation; // as Automation takes it
    std::optional<int> sampleRate;       // Hz; without it the input's own
    std::optional<RawFormat> raw;        // of standard input and output; without it they are WAV
    RenderTerms terms;
    bool force = false; // renders what there is of a damaged input
};

// What is to be said of a render that succeeded.
struct RenderOutcome {
    std::string summary;               // one line
    std::vector<std::string> warnings; // one line each
};

// Renders `input` into `output`, either of which may be "-", and calls `done` once it is written,
// while the plug-in is still there: what that does as it goes can't unsay it. Throws UserError when
// it fails; then nothing is written, but what standard output has got already.
void renderSound(const RenderOrder& order, const std::string& input, const std::string& output,
                 const std::function<void(const RenderOutcome&)>& done);

} // namespace tvhost
