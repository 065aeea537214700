#include "host/commands/PresetCommand.h"

#include "host/plugin/EffectInstance.h"
#include "host/presets/EffectState.h"
#include "host/presets/PresetDescription.h"
#include "host/presets/PresetFile.h"

#include <iostream>

namespace tvhost {

namespace {

// Effects that keep values by their rate are set at the usual one.
constexpr double kSampleRate = 44100.0;
constexpr int kBlockSize = 512;

} // namespace

CLI::App* PresetCommand::declare(CLI::App& app) {
    CLI::App* const command =
        app.add_subcommand("preset", "Save what an effect is set to, or show what was saved");
    command->require_subcommand(1);

    save_ = command->add_subcommand("save", "Save what an effect is set to as a preset file");
    save_
        ->add_option("FILE", file_,
                     "Preset file to write: .fxp holds the current program, .fxb all of them")
        ->required()
        ->type_name("");
    options_.declarePlugin(*save_);
    options_.declareSettings(*save_);
    save_->footer("  tvhost preset save mine.fxp --program Canyon --set Mix=0.5");

    show_ = command->add_subcommand("show", "Print what a preset file holds");
    show_->add_option("FILE", file_, "Preset file to read")->required()->type_name("");
    options_.declarePlugin(*show_, "Plug-in to load it into, so that its parameters have names");
    show_->add_flag("--json", json_, "Print JSON, with keys that stay from version to version");
    show_->footer("  tvhost preset show mine.fxp");
    command->footer("  tvhost preset save mine.fxp --program Canyon --set Mix=0.5\n"
                    "  tvhost preset show mine.fxp\n"
                    "  tvhost render in.wav out.wav --preset mine.fxp");
    return command;
}

void PresetCommand::run() {
    if (save_->parsed()) {
        save();
    } else {
        show();
    }
}

void PresetCommand::save() const {
    const Preset::Kind kind = presetKindFor(file_);
    EffectInstance effect(options_.load());
    effect.start(kSampleRate, kBlockSize);
    options_.settings.apply(effect);
    writePreset(file_, presetOf(effect, kind));
}

void PresetCommand::show() const {
    const Preset preset = readPreset(file_);
    if (options_.plugin.empty()) {
        std::cout << (json_ ? describe(preset).dump(2) + "\n" : describeForReading(preset));
        return;
    }
    EffectInstance effect(options_.load());
    effect.start(kSampleRate, kBlockSize);
    loadPreset(effect, preset, file_);
    std::cout << (json_ ? describe(preset, &effect).dump(2) + "\n"
                        : describeForReading(preset, &effect));
}

} // namespace tvhost
