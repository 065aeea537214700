#include "host/commands/ManualPage.h"

namespace tvhost {

namespace {

// Text as it is to be seen, whatever the characters mean to man.
std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (c == '\\') {
            result += "\\e";
        } else if (c == '-') {
            result += "\\-";
        } else {
            if ((c == '.' || c == '\'') && (result.empty() || result.back() == '\n')) {
                result += "\\&";
            }
            result += c;
        }
    }
    return result;
}

std::string bold(const std::string& text) {
    return "\\fB" + escaped(text) + "\\fR";
}

std::string italic(const std::string& text) {
    return "\\fI" + escaped(text) + "\\fR";
}

std::string synopsis(const DescribedCommand& command) {
    std::string text = bold("tvhost " + command.path());
    for (const DescribedOption& argument : command.arguments) {
        text += " " + italic(argument.names.front());
    }
    return text + (command.options.empty() ? "" : " [" + italic("OPTIONS") + "]");
}

std::string entry(const DescribedOption& option, bool isArgument) {
    std::string head;
    for (const std::string& name : option.names) {
        head += (head.empty() ? "" : ", ") + (isArgument ? italic(name) : bold(name));
    }
    if (!option.value.empty()) {
        head += " " + italic(option.value);
    }
    return ".TP\n" + head + "\n" + escaped(option.help) + "\n";
}

std::string section(const DescribedCommand& command) {
    std::string text = ".SS " + bold("tvhost " + command.path()) + "\n" + synopsis(command) +
                       "\n.PP\n" + escaped(command.help) + ".\n";
    for (const DescribedOption& argument : command.arguments) {
        text += entry(argument, true);
    }
    for (const DescribedOption& option : command.options) {
        text += entry(option, false);
    }
    if (!command.footer.empty()) {
        text += ".PP\n.nf\n" + escaped(command.footer) + "\n.fi\n";
    }
    return text;
}

} // namespace

std::string manualPage(const std::vector<DescribedCommand>& tree, const std::string& version) {
    const DescribedCommand& whole = tree.front();
    std::string text = ".TH TVHOST 1 \"\" \"tvhost " + version +
                       "\" \"User Commands\"\n"
                       ".SH NAME\ntvhost \\- " +
                       escaped(whole.help) + "\n.SH SYNOPSIS\n";
    for (const DescribedCommand& command : tree) {
        if (!command.words.empty() && command.commands.empty()) {
            text += synopsis(command) + "\n.br\n";
        }
    }
    text += ".SH OPTIONS\n";
    for (const DescribedOption& option : whole.options) {
        text += entry(option, false);
    }
    text += ".SH COMMANDS\n";
    for (const DescribedCommand& command : tree) {
        if (!command.words.empty()) {
            text += section(command);
        }
    }
    text += ".SH ENVIRONMENT\n"
            ".TP\n.BR VST_PATH \", \" LXVST_PATH\n"
            "Folders that hold plug\\-ins, with colons between them.\n"
            ".TP\n.B DISPLAY\nThe X server that editors are shown on.\n"
            ".SH EXIT STATUS\n"
            "0 when it did what was asked, and 2 after one line on standard error that says what\n"
            "is wrong and what would be right.\n";
    return text;
}

} // namespace tvhost
