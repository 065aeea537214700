// tvhost render: sound files through an effect into others.
#pragma once

#include "host/commands/Command.h"
#include "host/commands/EffectOptions.h"
#include "host/commands/RenderJob.h"

#include <string>
#include <vector>

namespace tvhost {

class RenderCommand : public Command {
public:
    CLI::App* declare(CLI::App& app) override;
    void run() override;
    int status() const override { return failed_ ? 2 : 0; }

private:
    RenderOrder order() const;
    void runBatch();

    std::string input_;
    std::string output_;
    std::vector<std::string> more_;
    std::string folder_;
    std::string jobs_;
    std::string raw_;
    EffectOptions options_;
    std::vector<std::string> automation_;
    std::string block_;
    std::string rate_;
    std::string tail_;
    std::string longestGap_;
    bool uncompensated_ = false;
    bool force_ = false;
    bool failed_ = false; // one of several
};

} // namespace tvhost
