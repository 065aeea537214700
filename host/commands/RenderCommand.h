#pragma once

#include "host/commands/Command.h"
#include "host/commands/EffectOptions.h"

#include <string>
#include <vector>

namespace tvhost {

// Sends a sound file through an effect into another.
class RenderCommand : public Command {
public:
    CLI::App* declare(CLI::App& app) override;
    void run() override;

private:
    std::string input;
    std::string output;
    EffectOptions options;
    std::vector<std::string> automation;
    std::string block;
    std::string rate;
    std::string tail;
};

} // namespace tvhost
