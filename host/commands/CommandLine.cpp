#include "host/commands/CommandLine.h"

#include "host/base/PlainText.h"
#include "host/base/UserError.h"
#include "host/commands/CheckCommand.h"
#include "host/commands/Command.h"
#include "host/commands/EditCommand.h"
#include "host/commands/InfoCommand.h"
#include "host/commands/ListCommand.h"
#include "host/commands/ManualCommand.h"
#include "host/commands/PlayCommand.h"
#include "host/commands/PlotCommand.h"
#include "host/commands/PresetCommand.h"
#include "host/commands/RenderCommand.h"
#include "host/commands/SnapshotCommand.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tvhost {

namespace {

constexpr int kRefused = 2;

std::string commandNames(const CLI::App& app) {
    const std::vector<const CLI::App*> commands = app.get_subcommands(nullptr);
    std::string names;
    for (std::size_t i = 0; i < commands.size(); ++i) {
        names += (i == 0 ? "" : i + 1 == commands.size() ? " or " : ", ") + commands[i]->get_name();
    }
    return names;
}

// What is wrong when no command of `app` was recognised.
std::string commandMissing(const CLI::App& app) {
    const std::string name = app.get_parent() ? app.get_name() + " " : "";
    const std::vector<std::string> words = app.remaining();
    return (words.empty() ? "no command is given" + (name.empty() ? "" : " to " + app.get_name())
                          : "there is no command \"" + name + words.front() + "\"") +
           "; give " + commandNames(app);
}

// What is wrong with the words given to a command.
std::string fault(const CLI::App& command, const CLI::ParseError& error) {
    const bool lacksCommand =
        !command.get_subcommands(nullptr).empty() && command.get_subcommands().empty();
    return (lacksCommand ? commandMissing(command) : std::string(error.what())) + "; see 'tvhost " +
           command.get_name() + " --help'";
}

int refuse(const std::string& text) {
    std::fprintf(stderr, "tvhost: %s\n", plainText(text).c_str());
    return kRefused;
}

} // namespace

int runCommandLine(int argc, const char* const* argv) {
    CLI::App app("Runs VST 2 effects from the command line.", "tvhost");
    app.set_version_flag("--version", "tvhost " TVHOST_VERSION, "Print the version and exit");
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.require_subcommand(1);
    app.footer("'tvhost COMMAND --help' tells more about each command.");

    std::vector<std::pair<const CLI::App*, std::unique_ptr<Command>>> commands;
    const auto add = [&](std::unique_ptr<Command> command) {
        const CLI::App* const declared = command->declare(app);
        commands.emplace_back(declared, std::move(command));
    };
    add(std::make_unique<InfoCommand>());
    add(std::make_unique<ListCommand>());
    add(std::make_unique<RenderCommand>());
    add(std::make_unique<PlayCommand>());
    add(std::make_unique<PlotCommand>());
    add(std::make_unique<EditCommand>());
    add(std::make_unique<SnapshotCommand>());
    add(std::make_unique<PresetCommand>());
    add(std::make_unique<CheckCommand>());
    add(std::make_unique<ManualCommand>());

    try {
        app.parse(argc, argv);
        int status = 0;
        for (const auto& [declared, command] : commands) {
            if (declared->parsed()) {
                command->run();
                status = command->status();
            }
        }
        // A full disk behind standard output is as much a failure as any other.
        std::cout.flush();
        if (!std::cout) {
            return refuse("standard output cannot be written; give one with room for the answer");
        }
        return status;
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) {
            return app.exit(error);
        }
        const std::vector<CLI::App*> given = app.get_subcommands();
        if (given.empty()) {
            return refuse(commandMissing(app) + "; see 'tvhost --help'");
        }
        return refuse(fault(*given.front(), error));
    } catch (const UserError& error) {
        return refuse(error.what());
    } catch (const std::bad_alloc&) {
        return refuse("there is not enough memory; give shorter files or smaller blocks");
    } catch (const std::exception& error) {
        return refuse(std::string("failed: ") + error.what());
    }
}

} // namespace tvhost
