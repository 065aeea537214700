// Lets an effect be heard, on a file or on live sound.
#pragma once

#include "host/commands/Command.h"
#include "host/commands/EffectOptions.h"
#include "host/play/AudioServer.h"
#include "host/play/Player.h"

#include <string>

namespace tvhost {

class PlayCommand : public Command {
public:
    CLI::App* declare(CLI::App& app) override;
    void run() override;

private:
    StreamWish wish() const;
    void listDevices() const;
    void tell(const Player::Report& report, const AudioServer& server,
              const std::string& effectName) const;

    std::string input_;
    EffectOptions options_;
    bool live_ = false;
    bool loops_ = false;
    bool editor_ = false;
    bool devices_ = false;
    std::string server_;
    std::string device_;
    std::string rate_;
    std::string block_;
    std::string longestGap_;
    std::string save_;
};

} // namespace tvhost
