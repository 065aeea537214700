// tvhost info: what a plug-in says about itself, as text or as JSON.
#pragma once

#include "host/commands/Command.h"
#include "host/commands/EffectOptions.h"

namespace tvhost {

class InfoCommand : public Command {
public:
    CLI::App* declare(CLI::App& app) override;
    void run() override;

private:
    EffectOptions options_;
    bool json_ = false;
};

} // namespace tvhost
