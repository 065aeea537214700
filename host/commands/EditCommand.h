#pragma once

#include "host/commands/Command.h"
#include "host/commands/EffectOptions.h"

namespace tvhost {

// Shows an effect's editor in a window until the user closes it.
class EditCommand : public Command {
public:
    CLI::App* declare(CLI::App& app) override;
    void run() override;

private:
    EffectOptions options;
};

} // namespace tvhost
