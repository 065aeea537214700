// The least that a stereo delay can do: two lines with feedback and a mix.
#pragma once

#include "bench/others/Contender.h"

#include <array>
#include <cstddef>
#include <vector>

class BareDelay : public Contender {
public:
    BareDelay();

    void run(const float* const* inputs, float* const* outputs, int frames) override;

private:
    std::array<std::vector<float>, 2> lines_;
    std::size_t position_ = 0;
};
