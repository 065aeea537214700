// tvhost plot: a picture of what an effect does to an impulse.
#pragma once

#include "host/commands/Command.h"
#include "host/commands/EffectOptions.h"

#include <string>

namespace tvhost {

class PlotCommand : public Command {
public:
    CLI::App* declare(CLI::App& app) override;
    void run() override;

private:
    void drawOne() const;
    void drawAll() const;

    std::string output_;
    EffectOptions options_;
    bool all_ = false;
};

} // namespace tvhost
