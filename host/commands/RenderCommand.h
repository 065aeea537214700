// tvhost render: a sound file through an effect into another.
#pragma once

#include "host/commands/Command.h"
#include "host/commands/EffectOptions.h"

#include <string>
#include <vector>

namespace tvhost {

class RenderCommand : public Command {
public:
    CLI::App* declare(CLI::App& app) override;
    void run() override;

private:
    std::string input_;
    std::string output_;
    EffectOptions options_;
    std::vector<std::string> automation_;
    std::string block_;
    std::string rate_;
    std::string tail_;
    std::string longestGap_;
    bool uncompensated_ = false;
    bool force_ = false;
};

} // namespace tvhost
