// tvhost plot: a picture of what an effect does to an impulse.
#pragma once

#include "host/commands/Command.h"
#include "host/commands/EffectOptions.h"
#include "host/commands/SecondsOption.h"

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
    double longestGap() const { return longestGapFrom(longestGap_); }

    EffectOptions options_;
    std::string longestGap_;
    bool all_ = false;
};

} // namespace tvhost
