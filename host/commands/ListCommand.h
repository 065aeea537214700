// Lists the plug-ins of this system.
#pragma once

#include "host/commands/Command.h"

#include <string>
#include <vector>

namespace tvhost {

class ListCommand : public Command {
public:
    CLI::App* declare(CLI::App& app) override;
    void run() override;

private:
    std::vector<std::string> folders_;
    bool json_ = false;
    std::string jobs_;
    std::string timeLimit_;
};

} // namespace tvhost
