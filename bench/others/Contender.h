// A stereo delay that is measured beside others, whatever its plug-in format.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

// What all contenders are set to, as near as their controls come to it.
constexpr double kContenderRate = 48000.0; // Hz
constexpr int kLongestBlock = 512;         // frames

class Contender {
public:
    Contender() = default;
    virtual ~Contender() = default;
    Contender(const Contender&) = delete;
    Contender& operator=(const Contender&) = delete;

    // One block of two channels; `frames` up to kLongestBlock. Input and output lie apart.
    virtual void run(const float* const* inputs, float* const* outputs, int frames) = 0;
};

struct ContenderKind {
    std::string name;
    std::string work;                                 // what it is set to do, for the table
    std::function<std::unique_ptr<Contender>()> make; // throws std::runtime_error that says why not
};

// In the order of the table. The first is the floor: a delay that does nothing else.
const std::vector<ContenderKind>& contenders();

// One for each factory program of TvDelay.
std::vector<ContenderKind> tvDelayPrograms();
