#include "host/commands/ShellCompletion.h"

namespace tvhost {

namespace {

// Every command that ends a command line.
std::vector<DescribedCommand> leavesOf(const std::vector<DescribedCommand>& tree) {
    std::vector<DescribedCommand> leaves;
    for (const DescribedCommand& command : tree) {
        if (command.commands.empty()) {
            leaves.push_back(command);
        }
    }
    return leaves;
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

std::string optionNames(const DescribedCommand& command, bool withValue) {
    std::vector<std::string> names;
    for (const DescribedOption& option : command.options) {
        if (!withValue || !option.value.empty()) {
            names.insert(names.end(), option.names.begin(), option.names.end());
        }
    }
    return joined(names);
}

// In single quotes, for bash and zsh.
std::string quoted(const std::string& text) {
    std::string result = "'";
    for (const char c : text) {
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return result + "'";
}

// In single quotes, for fish, where a backslash means something inside them too.
std::string quotedForFish(const std::string& text) {
    std::string result = "'";
    for (const char c : text) {
        result += c == '\'' || c == '\\' ? std::string{'\\', c} : std::string(1, c);
    }
    return result + "'";
}

// What zsh reads between brackets or after a colon.
std::string plainForZsh(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (c == '[' || c == ']' || c == ':' || c == '\\') {
            result += '\\';
        }
        result += c;
    }
    return result;
}

const DescribedCommand& find(const std::vector<DescribedCommand>& tree,
                             const std::vector<std::string>& words) {
    for (const DescribedCommand& command : tree) {
        if (command.words == words) {
            return command;
        }
    }
    return tree.front();
}

} // namespace

std::string bashCompletion(const std::vector<DescribedCommand>& tree) {
    std::string cases;
    for (const DescribedCommand& command : tree) {
        cases += "    " + quoted(command.path()) + ")\n        words=" +
                 quoted(joined(command.commands.empty() ? std::vector<std::string>{}
                                                        : command.commands) +
                        (command.commands.empty() ? "" : " ") + optionNames(command, false)) +
                 "\n        values=" + quoted(optionNames(command, true)) + " ;;\n";
    }
    std::string paths;
    for (const DescribedCommand& command : tree) {
        if (!command.words.empty()) {
            paths += (paths.empty() ? "" : " | ") + quoted(command.path());
        }
    }
    return "# Completes the words of tvhost for bash.\n"
           "_tvhost() {\n"
           "    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]}\n"
           "    local path= next words= values= i\n"
           "    for ((i = 1; i < COMP_CWORD; i++)); do\n"
           "        next=\"${path:+$path }${COMP_WORDS[i]}\"\n"
           "        case $next in\n"
           "        " +
           paths +
           ") path=$next ;;\n"
           "        *) break ;;\n"
           "        esac\n"
           "    done\n"
           "    case $path in\n" +
           cases +
           "    esac\n"
           "    COMPREPLY=()\n"
           "    if [[ \" $values \" == *\" $before \"* ]]; then\n"
           "        COMPREPLY=($(compgen -f -- \"$word\"))\n"
           "    elif [[ $word == -* || \" $words\" != ' -'* ]]; then\n"
           "        COMPREPLY=($(compgen -W \"$words\" -- \"$word\"))\n"
           "    else\n"
           "        COMPREPLY=($(compgen -f -- \"$word\"))\n"
           "    fi\n"
           "}\n"
           "complete -o filenames -F _tvhost tvhost\n";
}

std::string zshCompletion(const std::vector<DescribedCommand>& tree) {
    std::string text = "#compdef tvhost\n"
                       "# Completes the words of tvhost for zsh.\n"
                       "_tvhost() {\n"
                       "    local -a commands\n"
                       "    local path=${words[2]}\n";
    for (const DescribedCommand& command : tree) {
        if (command.commands.empty()) {
            continue;
        }
        const std::size_t place = command.words.size() + 2;
        text += "    if (( CURRENT == " + std::to_string(place) + " ))" +
                (command.words.empty() ? "" : " && [[ $path == " + command.words.back() + " ]]") +
                "; then\n        commands=(\n";
        for (const std::string& name : command.commands) {
            std::vector<std::string> words = command.words;
            words.push_back(name);
            text +=
                "            " + quoted(name + ":" + plainForZsh(find(tree, words).help)) + "\n";
        }
        text += "        )\n        _describe command commands\n";
        for (const DescribedOption& option : command.options) {
            for (const std::string& name : option.names) {
                text += "        compadd -- " + name + "\n";
            }
        }
        text += "        return\n    fi\n";
        if (!command.words.empty()) {
            text +=
                "    [[ $path == " + command.words.back() + " ]] && path=\"$path ${words[3]}\"\n";
        }
    }
    text += "    case $path in\n";
    for (const DescribedCommand& command : leavesOf(tree)) {
        text += "    " + quoted(command.path()) + ")\n        _arguments";
        for (const DescribedOption& option : command.options) {
            for (const std::string& name : option.names) {
                text +=
                    " \\\n            " +
                    quoted(
                        "*" + name + "[" + plainForZsh(option.help) + "]" +
                        (option.value.empty() ? "" : ":" + plainForZsh(option.value) + ":_files"));
            }
        }
        text += " \\\n            '*:file:_files' ;;\n";
    }
    return text + "    esac\n}\n_tvhost \"$@\"\n";
}

std::string fishCompletion(const std::vector<DescribedCommand>& tree) {
    std::string text = "# Completes the words of tvhost for fish.\n";
    for (const DescribedCommand& command : tree) {
        std::string when;
        for (const std::string& word : command.words) {
            when += (when.empty() ? "" : "; and ") + ("__fish_seen_subcommand_from " + word);
        }
        std::string before = when.empty() ? "__fish_use_subcommand" : when;
        if (!when.empty() && !command.commands.empty()) {
            before += "; and not __fish_seen_subcommand_from " + joined(command.commands);
        }
        for (const std::string& name : command.commands) {
            std::vector<std::string> words = command.words;
            words.push_back(name);
            text += "complete -c tvhost -f -n " + quotedForFish(before) + " -a " + name + " -d " +
                    quotedForFish(find(tree, words).help) + "\n";
        }
        for (const DescribedOption& option : command.options) {
            text += "complete -c tvhost -n " + quotedForFish(before);
            for (const std::string& name : option.names) {
                text +=
                    name.rfind("--", 0) == 0 ? " -l " + name.substr(2) : " -s " + name.substr(1);
            }
            text +=
                (option.value.empty() ? "" : " -r") + (" -d " + quotedForFish(option.help)) + "\n";
        }
    }
    return text;
}

} // namespace tvhost
