// Looks for what hosts would suffer from in a plug-in.
#pragma once

#include "host/check/CheckSession.h"
#include "host/commands/Command.h"

#include <cstdint>
#include <string>

namespace tvhost {

class CheckCommand : public Command {
public:
    CLI::App* declare(CLI::App& app) override;
    void run() override;
    int status() const override { return status_; }

private:
    CheckSession::Plan plan() const;

    std::string plugin_;
    std::string only_;
    int level_ = 5;
    std::int64_t seed_ = 0;
    const CLI::Option* seedOption_ = nullptr;
    int jobs_ = 1;
    int limit_ = 60; // s
    bool list_ = false;
    bool json_ = false;
    bool asChild_ = false;
    int status_ = 0;
};

} // namespace tvhost
