#include "host/commands/CommandTree.h"

namespace tvhost {

namespace {

DescribedOption describeOption(const CLI::Option& option) {
    DescribedOption described;
    for (const std::string& name : option.get_snames()) {
        described.names.push_back("-" + name);
    }
    for (const std::string& name : option.get_lnames()) {
        described.names.push_back("--" + name);
    }
    described.help = option.get_description();
    if (option.get_positional()) {
        described.names = {option.get_name(true)};
    } else if (option.get_items_expected_max() > 0) {
        described.value = option.get_type_name();
    }
    return described;
}

void add(const CLI::App& app, const std::vector<std::string>& words,
         std::vector<DescribedCommand>& tree) {
    DescribedCommand command;
    command.words = words;
    command.help = app.get_description();
    command.footer = app.get_footer();
    for (const CLI::Option* const option : app.get_options(nullptr)) {
        // What belongs to no group is for tvhost itself; --help doesn't show it either.
        if (option->get_group().empty()) {
            continue;
        }
        (option->get_positional() ? command.arguments : command.options)
            .push_back(describeOption(*option));
    }
    const std::vector<const CLI::App*> next = app.get_subcommands(nullptr);
    for (const CLI::App* const inner : next) {
        command.commands.push_back(inner->get_name());
    }
    tree.push_back(command);
    for (const CLI::App* const inner : next) {
        std::vector<std::string> innerWords = words;
        innerWords.push_back(inner->get_name());
        add(*inner, innerWords, tree);
    }
}

} // namespace

std::string DescribedCommand::path() const {
    std::string path;
    for (const std::string& word : words) {
        path += (path.empty() ? "" : " ") + word;
    }
    return path;
}

std::vector<DescribedCommand> commandTree(const CLI::App& app) {
    std::vector<DescribedCommand> tree;
    add(app, {}, tree);
    return tree;
}

} // namespace tvhost
