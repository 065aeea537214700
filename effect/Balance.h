// What the balance makes of the wet signal.
#pragma once

struct BalanceGains {
    float toLeft;
    float toRight;
};

// At 0.5 both are 1.0. Towards 0.0 and below the right output fades, towards 1.0 and above the left
// one; not-a-numbers stand for the centre.
inline BalanceGains balanceGains(double leftRight) {
    if (leftRight < 0.5) {
        return {1.0f, static_cast<float>(leftRight + leftRight)};
    }
    if (leftRight > 0.5) {
        return {static_cast<float>(2.0 - (leftRight + leftRight)), 1.0f};
    }
    return {1.0f, 1.0f};
}
