// A pair of filters on its way through a sub-block.
#pragma once

#include "effect/SubBlockVectors.h"

namespace {

// Lanes: both sides of the low chain, both sides of the high chain. The second stage of a chain
// runs a frame behind the first, the third a frame behind the second and the fourth behind that:
// so in each step all four find ready what they need. The first stage is three frames ahead of the
// results then; what it makes of frames that don't come is thrown away.
class SubBlockPair {
public:
    TVDELAY_INLINE void start(const FilterPair& pair, Taps& in) {
        steady_ = pair.steady.filter;
        dipped_ = pair.dipped.filter;
        in_ = &in;
        c_ = Doubles4{steady_->lowCoefficient, dipped_->lowCoefficient, steady_->highCoefficient,
                      dipped_->highCoefficient};
        const HeldFilter& s = pair.steady;
        const HeldFilter& d = pair.dipped;
        lowGain_ = Doubles4{s.lowGain, d.lowGain, s.lowGain, d.lowGain};
        midGain_ = Doubles4{s.midGain, d.midGain, s.midGain, d.midGain};
        highGain_ = Doubles4{s.highGain, d.highGain, s.highGain, d.highGain};
        for (int stage = 0; stage < 4; ++stage) {
            s_[stage] = Doubles4{steady_->lowStages[stage], dipped_->lowStages[stage],
                                 steady_->highStages[stage], dipped_->highStages[stage]};
        }
        for (int age = 0; age < kInputHistory; ++age) {
            double* const frame = in.frame(-1 - age);
            frame[0] = steady_->inputHistory[age];
            frame[1] = dipped_->inputHistory[age];
        }
    }

    // The steps before the first result. Frames 0 to 2 have to be in.
    TVDELAY_INLINE void lead() {
        tickStage0(0);
        tickStage(1);
        tickStage0(1);
        tickStage(2);
        tickStage(1);
        tickStage0(2);
    }

    // The results of frames `i` to `i + 3`, rounded to single precision. Frames to i + 6 have to be
    // in, as zeros where they don't come.
    TVDELAY_INLINE void tickFour(int i, TurnedFrames& out) {
        Doubles4 one;
        Doubles4 two;
        tick(i + 3, one);
        lastWhole_[0] = s_[0];
        tick(i + 4, two);
        lastWhole_[1] = s_[1];
        mixBands(i, one, two, out.first);
        tick(i + 5, one);
        lastWhole_[2] = s_[2];
        tick(i + 6, two);
        lastWhole_[3] = s_[3];
        mixBands(i + 2, one, two, out.second);
    }

    // Gives the filters the state after the last frame that had a result, the one before `end`.
    TVDELAY_INLINE void finish(int end) {
        for (int stage = 0; stage < 4; ++stage) {
            const Doubles4 s = lastWhole_[stage];
            steady_->lowStages[stage] = s[0];
            dipped_->lowStages[stage] = s[1];
            steady_->highStages[stage] = s[2];
            dipped_->highStages[stage] = s[3];
        }
        for (int age = 0; age < kInputHistory; ++age) {
            const double* const frame = in_->frame(end - 1 - age);
            steady_->inputHistory[age] = frame[0];
            dipped_->inputHistory[age] = frame[1];
        }
    }

private:
    // One step of all stages, the first one on the input of `frame`; gives the last stages.
    TVDELAY_INLINE void tick(int frame, Doubles4& last) {
        tickStage(3);
        last = s_[3];
        tickStage(2);
        tickStage(1);
        tickStage0(frame);
    }

    TVDELAY_INLINE void tickStage0(int frame) {
        Doubles2 input;
        load(input, in_->frame(frame));
        const Doubles4 x = __builtin_shufflevector(input, input, 0, 1, 0, 1);
        s_[0] = (s_[0] + kAntiDenormal) + (x - s_[0]) * c_;
    }

    TVDELAY_INLINE void tickStage(int stage) {
        s_[stage] = (s_[stage - 1] - s_[stage]) * c_ + s_[stage];
    }

    // The results of frames `i` and `i + 1` from their last stages.
    TVDELAY_INLINE void mixBands(int i, const Doubles4& one, const Doubles4& two, Floats4& out) {
        Doubles4 before; // the inputs of three frames ago
        load(before, in_->frame(i - kInputHistory));
        const Doubles4 lowBand = __builtin_shufflevector(one, two, 0, 1, 4, 5);
        const Doubles4 highChain = __builtin_shufflevector(one, two, 2, 3, 6, 7);
        const Doubles4 midBand = highChain - lowBand;
        const Doubles4 highBand = before - highChain;
        out = __builtin_convertvector(
            (highGain_ * highBand + midGain_ * midBand) + lowGain_ * lowBand, Floats4);
    }

    FourPoleFilter* steady_;
    FourPoleFilter* dipped_;
    Taps* in_;
    Doubles4 c_;
    Doubles4 lowGain_;
    Doubles4 midGain_;
    Doubles4 highGain_;
    Doubles4 s_[4];         // each a frame ahead of the next
    Doubles4 lastWhole_[4]; // of the frame of the last result
};

} // namespace
