#include "host/commands/ManualCommand.h"

#include "host/base/UserError.h"
#include "host/commands/CommandTree.h"
#include "host/commands/ManualPage.h"
#include "host/commands/ShellCompletion.h"

#include <iostream>

namespace tvhost {

CLI::App* ManualCommand::declare(CLI::App& app) {
    whole_ = &app;
    CLI::App* const command =
        app.add_subcommand("manual", "Print the manual page, or a shell's completion");
    command
        ->add_option("--completion", shell_,
                     "Print what this shell reads to complete command lines: bash, zsh or fish")
        ->type_name("SHELL");
    command->footer("  tvhost manual | man -l -\n"
                    "  source <(tvhost manual --completion bash)");
    return command;
}

void ManualCommand::run() {
    const std::vector<DescribedCommand> tree = commandTree(*whole_);
    if (shell_.empty()) {
        std::cout << manualPage(tree, TVHOST_VERSION);
    } else if (shell_ == "bash") {
        std::cout << bashCompletion(tree);
    } else if (shell_ == "zsh") {
        std::cout << zshCompletion(tree);
    } else if (shell_ == "fish") {
        std::cout << fishCompletion(tree);
    } else {
        throw UserError("--completion " + shell_ + ": give bash, zsh or fish");
    }
}

} // namespace tvhost
