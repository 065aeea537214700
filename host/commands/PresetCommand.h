// Writes what an effect is set to as a preset file, and shows what one holds.
#pragma once

#include "host/commands/Command.h"
#include "host/commands/EffectOptions.h"

#include <string>

namespace tvhost {

class PresetCommand : public Command {
public:
    CLI::App* declare(CLI::App& app) override;
    void run() override;

private:
    void save() const;
    void show() const;

    CLI::App* save_ = nullptr;
    CLI::App* show_ = nullptr;
    std::string file_;
    EffectOptions options_;
    bool json_ = false;
};

} // namespace tvhost
