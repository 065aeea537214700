// One check in a process of its own, and what came of it.
#pragma once

#include <nlohmann/json.hpp>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/types.h>

namespace tvhost {

struct LastCall;

struct CheckFinding {
    std::string topic;
    std::string text;
};

// What one process told. A crash, a hang and an end before its time are findings with the topics
// "crash", "hang" and "exit".
struct CheckOutcome {
    std::vector<CheckFinding> findings;
    std::string skipped; // the reason, when the check says nothing about this plug-in
    std::string refused; // the reason, when the plug-in can't be run at all
    nlohmann::json answer;
    double seconds = 0.0;
};

// This program once more, as the one that runs the check. Ended with all its children when the
// object goes.
class CheckProcess {
public:
    struct Order {
        std::filesystem::path plugin;
        std::string check; // empty asks the plug-in for its name alone
        std::uint64_t seed = 0;
        std::filesystem::path preload; // empty for none
        bool guardsMemory = false;     // by what is preloaded
    };

    // Starts at once. Throws UserError when the system gives no process.
    CheckProcess(const Order& order, std::chrono::seconds limit);
    ~CheckProcess();
    CheckProcess(const CheckProcess&) = delete;
    CheckProcess& operator=(const CheckProcess&) = delete;

    // What it has to say is to be read here: its report, standard output and standard error.
    std::vector<int> descriptors() const;
    // Reads what is there; false once the process has ended or its time is over, and then
    // outcome() tells.
    bool advance();
    const CheckOutcome& outcome() const { return outcome_; }

private:
    void read(int& descriptor, std::string& text);
    void take(const std::string& line);
    void judge(int status);
    void judgeHang();

    using Clock = std::chrono::steady_clock;

    LastCall* lastCall_ = nullptr;
    pid_t process_ = -1;
    int report_ = -1;
    int out_ = -1;
    int err_ = -1;
    std::string reportText_;
    std::string outText_;
    std::string errText_;
    Clock::time_point begin_ = Clock::now();
    std::chrono::seconds limit_;
    bool done_ = false;
    CheckOutcome outcome_;
};

} // namespace tvhost
