#pragma once

#include "host/commands/Command.h"
#include "host/commands/EffectOptions.h"

#include <string>

namespace tvhost {

// Draws what an effect does with an impulse.
class PlotCommand : public Command {
public:
    CLI::App* declare(CLI::App& app) override;
    void run() override;

private:
    void drawOne() const;
    void drawAll() const;

    std::string output;
    EffectOptions options;
    bool all = false;
};

} // namespace tvhost
