#pragma once

#include "host/commands/Command.h"

#include <string>

namespace tvhost {

// Prints what a plug-in says about itself, as text or as JSON.
class InfoCommand : public Command {
public:
    CLI::App* declare(CLI::App& app) override;
    void run() override;

private:
    std::string plugin;
    bool json = false;
};

} // namespace tvhost
