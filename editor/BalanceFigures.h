// The two figures that stand for a balance between left and right.
#pragma once

#include <cstdint>

// In percent.
struct BalanceFigures {
    std::int32_t left;
    std::int32_t right;
};

// For a pan value of 0 for left, 50 for the centre and 100 for right. Values beyond give figures
// beyond 100; where those leave 32 bits, they wrap.
BalanceFigures balanceFigures(std::int32_t pan);
