// The frame around each example: its command line, and one line on standard error for what is
// wrong.
#pragma once

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <string>

// Parses the command line of `app`, then runs `action`. Gives the program's exit status: 0, or 2
// when the command line is wrong or `action` throws.
template <class Action>
int runExample(CLI::App& app, int argc, char** argv, Action action) {
    try {
        app.parse(argc, argv);
        action();
        return 0;
    } catch (const CLI::Success& success) { // --help
        return app.exit(success);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", app.get_name().c_str(), error.what());
        return 2;
    }
}
