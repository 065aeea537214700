// tvhost edit: an effect's editor in a window, until the user closes it.
#pragma once

#include "host/base/StopRequest.h"
#include "host/commands/Command.h"
#include "host/commands/EffectOptions.h"

#include <string>

namespace tvhost {

class EditCommand : public Command {
public:
    CLI::App* declare(CLI::App& app) override;
    void run() override;

private:
    void showEditor(EffectInstance& effect, const StopRequest& stop) const;

    EffectOptions options_;
    std::string save_;
};

} // namespace tvhost
