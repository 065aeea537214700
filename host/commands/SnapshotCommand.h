// tvhost snapshot: a picture of an effect's editor.
#pragma once

#include "host/commands/Command.h"
#include "host/commands/EffectOptions.h"

#include <string>

namespace tvhost {

class SnapshotCommand : public Command {
public:
    CLI::App* declare(CLI::App& app) override;
    void run() override;

private:
    std::string output_;
    EffectOptions options_;
};

} // namespace tvhost
