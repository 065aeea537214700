// Texts of a command line for an effect: programs, settings and automation. Each is done or refused
// in one line, and what was set is a value that parameters can have.
#include "host/base/PlainText.h"
#include "host/base/UserError.h"
#include "host/plugin/EffectInstance.h"
#include "host/plugin/PluginModule.h"
#include "host/presets/EffectSettings.h"
#include "host/render/Automation.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

constexpr double kRate = 44100.0;
constexpr std::int64_t kFrames = 1000000000;

tvhost::EffectInstance& effect() {
    static auto* const made =
        new tvhost::EffectInstance(std::make_shared<const tvhost::PluginModule>(FUZZED_PLUGIN));
    return *made;
}

// As the program prints it.
void expectOneLine(const std::string& text) {
    const std::string reason = tvhost::plainText(text);
    if (reason.empty() || reason.find('\n') != std::string::npos) {
        std::fprintf(stderr, "refused with \"%s\"\n", reason.c_str());
        std::abort();
    }
}

void expectNormalisedValues() {
    for (int index = 0; index < effect().parameterCount(); ++index) {
        const float value = effect().parameter(index);
        if (!(value >= 0.0f && value <= 1.0f)) {
            std::fprintf(stderr, "parameter %d holds %g\n", index, static_cast<double>(value));
            std::abort();
        }
    }
}

void setBy(FuzzedDataProvider& input) {
    tvhost::EffectSettings settings;
    if (input.ConsumeBool()) {
        settings.program = input.ConsumeRandomLengthString(40);
    }
    while (input.remaining_bytes() > 0) {
        settings.sets.push_back(input.ConsumeRandomLengthString(60));
    }
    settings.apply(effect());
}

void automateBy(FuzzedDataProvider& input) {
    tvhost::Automation automation(effect(), {input.ConsumeRemainingBytesAsString()}, kRate);
    for (std::int64_t frame = 0; automation.pending() > 0 && frame < kFrames;) {
        automation.apply(effect(), frame);
        frame += automation.framesUntilNext(frame, kFrames);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    try {
        if (input.ConsumeBool()) {
            setBy(input);
        } else {
            automateBy(input);
        }
    } catch (const tvhost::UserError& error) {
        expectOneLine(error.what());
    }
    expectNormalisedValues();
    return 0;
}
