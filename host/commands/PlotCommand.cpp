#include "host/commands/PlotCommand.h"

#include "host/base/UserError.h"
#include "host/measure/EffectMeasurement.h"
#include "host/measure/ProgramMeasurements.h"
#include "host/plot/PlotFile.h"
#include "host/plot/ProgramPage.h"
#include "host/plot/ProgramSheet.h"

#include <string>

namespace tvhost {

CLI::App* PlotCommand::declare(CLI::App& app) {
    CLI::App* const command =
        app.add_subcommand("plot", "Draw the echoes of an effect and their frequency response");
    command->add_option("OUT", output_, "Picture to write, .svg or .png")
        ->required()
        ->type_name("");
    options_.declarePlugin(*command);
    const EffectOptions::SettingOptions settings = options_.declareSettings(*command);
    command->add_flag("--all", all_, "Draw all programs on one sheet")
        ->excludes(settings.program)
        ->excludes(settings.preset);
    declareLongestGap(*command, longestGap_);
    command->footer(
        "Each input in turn gets one sample of 1.0 at 44100 Hz; echoes are found in what comes\n"
        "out, down to -120 dB, and marked with their time and level.\n"
        "\n"
        "  tvhost plot slapback.svg --program SlapBack\n"
        "  tvhost plot programs.png --all");
    return command;
}

void PlotCommand::run() {
    PlotFile::requireKnownExtension(output_);
    if (all_) {
        drawAll();
    } else {
        drawOne();
    }
}

void PlotCommand::drawOne() const {
    const EffectMeasurement measurement(options_.load(), options_.settings, longestGap());
    const ProgramPage page(measurement);
    PlotFile file(output_, page.width(), page.height());
    Canvas canvas = file.canvas();
    page.draw(canvas);
    file.finish();
}

void PlotCommand::drawAll() const {
    const ProgramMeasurements programs([this] { return options_.load(); }, options_.settings,
                                       longestGap());
    const ProgramSheet sheet(programs.count(),
                             [&](const ProgramSheet::Take& take) { programs.each(take); });
    PlotFile file(output_, sheet.width(), sheet.height());
    Canvas canvas = file.canvas();
    sheet.draw(canvas);
    file.finish();
}

} // namespace tvhost
