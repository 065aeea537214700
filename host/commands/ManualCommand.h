// Prints the manual page and what shells read to complete command lines.
#pragma once

#include "host/commands/Command.h"

#include <string>

namespace tvhost {

class ManualCommand : public Command {
public:
    CLI::App* declare(CLI::App& app) override;
    void run() override;

private:
    const CLI::App* whole_ = nullptr;
    std::string shell_;
};

} // namespace tvhost
