// What belongs to the host in a process that a plug-in is loaded into.
#pragma once

#include <map>
#include <string>

// By name, as text: each signal's handler with its flags, the signals held back, alternate stack,
// locale, environment, the X library's handlers, the handler of uncaught exceptions, folder, file
// mode mask, timers and the rounding of floating-point numbers. For the main thread.
std::map<std::string, std::string> processState();

// One line for each entry that differs; empty when none does.
std::string differences(const std::map<std::string, std::string>& before,
                        const std::map<std::string, std::string>& after);
