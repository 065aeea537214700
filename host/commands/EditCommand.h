// tvhost edit: an effect's editor in a window, until the user closes it.
#pragma once

#include "host/commands/Command.h"
#include "host/commands/EffectOptions.h"

namespace tvhost {

class EditCommand : public Command {
public:
    CLI::App* declare(CLI::App& app) override;
    void run() override;

private:
    EffectOptions options_;
};

} // namespace tvhost
