// What all subcommands have in common.
#pragma once

#include <CLI/App.hpp>

namespace tvhost {

// One subcommand: declares its arguments, and runs once they are parsed.
class Command {
public:
    virtual ~Command() = default;

    // Adds the subcommand to `app`, whose parse fills this object's members.
    virtual CLI::App* declare(CLI::App& app) = 0;

    // Throws UserError when something given cannot be used.
    virtual void run() = 0;

    // What the program ends with after a run() that came back.
    virtual int status() const { return 0; }
};

} // namespace tvhost
