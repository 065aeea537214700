// The signal path over a sub-block: what a kernel compiles for its instruction set.
#pragma once

#include "effect/FieldWatch.h"
#include "effect/SubBlockPair.h"
#include "effect/SubBlockVectors.h"

namespace {

// How many frames go through between two looks at the live fields.
constexpr int kWatchedFrames = 16;

// What lies between the steps of a sub-block.
struct Between {
    Taps taps[2];                         // before each pair
    float afterPair[2][2 * kMaxSubBlock]; // both sides in turn
};

// The road of a sub-block, four frames at a time: out of the lines, through the pairs, back into
// the lines and out. Each step works on frames that the one before has long done with, so that no
// step waits for another and all of them share the waiting time within the filters.
template <int kPairs, bool kSwept>
class SubBlockRoad {
public:
    TVDELAY_INLINE SubBlockRoad(const SubBlock& subBlock, Between& between)
        : subBlock_(subBlock), between_(between), first_{}, second_{}, steady_(subBlock.steady),
          dipped_(subBlock.dipped), inside_(subBlock.pairsInside),
          feedBack_(subBlock.held.feedBack), level_(subBlock.held.mix),
          depth_(subBlock.held.panDepth) {
        if constexpr (kPairs > 0) {
            first_.start(subBlock.pairs[0], between.taps[0]);
        }
        if constexpr (kPairs > 1) {
            second_.start(subBlock.pairs[1], between.taps[1]);
        }
    }

    // Returns how many frames went through.
    TVDELAY_INLINE int run() {
        const int frames = subBlock_.frames;
        int i = 0;
        for (int ahead = 0; ahead < kWatchedFrames; ahead += 4) {
            readLines(ahead);
        }
        for (; i < frames; i += 4) {
            if (i % kWatchedFrames == 0) {
                if (!stillHolds<kPairs>(subBlock_)) {
                    break;
                }
                fetchNext(i);
            }
            if (i >= kLeaveLag) {
                leave(i - kLeaveLag);
            }
            if (i >= kSecondLag) {
                tickSecond(i - kSecondLag);
            }
            if (i >= kWidenLag) {
                widenBetween(i - kWidenLag);
            }
            tickFirst(i);
            readLines(i + kWatchedFrames);
        }
        drain(i);
        return i;
    }

private:
    // How many frames later than the first pair the other steps run.
    static constexpr int kWidenLag = 4;
    static constexpr int kSecondLag = 12;
    static constexpr int kLeaveLag = kPairs == 2 ? 20 : kPairs == 1 ? 4 : 0;

    // Has fetched what the next sub-block will read for frames `i` to `i + 15`: until this
    // instance's turn comes again, those of others take its place. The last of each cache line's
    // frames are named, since the line before the first is at hand.
    TVDELAY_INLINE void fetchNext(int i) {
        __builtin_prefetch(steady_.nextLine + i + kWatchedFrames - 1);
        __builtin_prefetch(dipped_.nextLine + i + kWatchedFrames - 1);
        if constexpr (kSwept) {
            __builtin_prefetch(subBlock_.nextSines + i + kWatchedFrames / 2 - 1);
            __builtin_prefetch(subBlock_.nextSines + i + kWatchedFrames - 1);
        }
    }

    // What the steps behind the first pair still have of the frames before `end`.
    TVDELAY_INLINE void drain(int end) {
        if (end == 0) {
            return;
        }
        if constexpr (kPairs == 2) {
            between_.taps[1].clear(end);
        }
        for (int i = end; i < end + kLeaveLag; i += 4) {
            if (i >= kLeaveLag) {
                leave(i - kLeaveLag);
            }
            if (i >= kSecondLag && i < end + kSecondLag) {
                tickSecond(i - kSecondLag);
            }
            if (i < end + kWidenLag) {
                widenBetween(i - kWidenLag);
            }
        }
        if constexpr (kPairs > 0) {
            first_.finish(end);
        }
        if constexpr (kPairs > 1) {
            second_.finish(end);
        }
    }

    TVDELAY_INLINE void readLines(int i) {
        if constexpr (kPairs > 0) {
            if (i > subBlock_.frames) {
                return;
            }
            if (i < subBlock_.frames) {
                FourFrames line;
                readLine(i, line);
                TurnedFrames turned;
                inTurn(line, turned);
                between_.taps[0].widen(i, turned);
            } else {
                between_.taps[0].clear(i);
            }
        }
    }

    TVDELAY_INLINE void tickFirst(int i) {
        if constexpr (kPairs > 0) {
            if (i == 0) {
                first_.lead();
            }
            TurnedFrames turned;
            first_.tickFour(i, turned);
            store(turned, between_.afterPair[0] + 2 * static_cast<std::ptrdiff_t>(i));
        }
    }

    TVDELAY_INLINE void widenBetween(int i) {
        if constexpr (kPairs == 2) {
            TurnedFrames turned;
            load(turned, between_.afterPair[0] + 2 * static_cast<std::ptrdiff_t>(i));
            between_.taps[1].widen(i, turned);
        }
    }

    TVDELAY_INLINE void tickSecond(int i) {
        if constexpr (kPairs == 2) {
            if (i == 0) {
                second_.lead();
            }
            TurnedFrames turned;
            second_.tickFour(i, turned);
            store(turned, between_.afterPair[1] + 2 * static_cast<std::ptrdiff_t>(i));
        }
    }

    // Into the lines and out.
    TVDELAY_INLINE void leave(int i) {
        FourFrames loop;
        FourFrames wet;
        if constexpr (kPairs == 0) {
            readLine(i, loop);
            wet = loop;
        } else {
            readAfterPair(kPairs - 1, i, wet);
            loop = wet;
            if (inside_ == 0) {
                readLine(i, loop);
            } else if (inside_ < kPairs) {
                readAfterPair(0, i, loop);
            }
        }
        Floats4 inSteady; // both before any output, which may lie over them
        Floats4 inDipped;
        load(inSteady, steady_.in + i);
        load(inDipped, dipped_.in + i);
        store(feedBack_ * loop.steady + inSteady, steady_.line + i);
        store(feedBack_ * loop.dipped + inDipped, dipped_.line + i);

        // The lines cross here: each comes out on the other side.
        Doubles4 steady = __builtin_convertvector(wet.dipped * steady_.gain, Doubles4) * level_;
        Doubles4 dipped = __builtin_convertvector(wet.steady * dipped_.gain, Doubles4) * level_;
        if constexpr (kSwept) {
            Doubles4 sine;
            load(sine, subBlock_.sines + i);
            dipped *= 1.0 - depth_ * sine;
        }
        steady += __builtin_convertvector(inSteady, Doubles4);
        dipped += __builtin_convertvector(inDipped, Doubles4);
        store(__builtin_convertvector(steady, Floats4), steady_.out + i);
        store(__builtin_convertvector(dipped, Floats4), dipped_.out + i);
    }

    TVDELAY_INLINE void readLine(int i, FourFrames& frames) const {
        load(frames.steady, steady_.line + i);
        load(frames.dipped, dipped_.line + i);
    }

    TVDELAY_INLINE void readAfterPair(int pair, int i, FourFrames& frames) const {
        TurnedFrames turned;
        load(turned, between_.afterPair[pair] + 2 * static_cast<std::ptrdiff_t>(i));
        apart(turned, frames);
    }

    const SubBlock& subBlock_;
    Between& between_;
    SubBlockPair first_;
    SubBlockPair second_;
    Side steady_;
    Side dipped_;
    int inside_;
    float feedBack_;
    double level_;
    double depth_;
};

template <int kPairs>
TVDELAY_INLINE int runRoad(const SubBlock& subBlock) {
    alignas(64) Between between;
    if (subBlock.sines != nullptr) {
        return SubBlockRoad<kPairs, true>(subBlock, between).run();
    }
    return SubBlockRoad<kPairs, false>(subBlock, between).run();
}

TVDELAY_INLINE void renderSubBlock(SubBlock& subBlock) {
    switch (subBlock.pairsRunning) {
    case 2:
        subBlock.frames = runRoad<2>(subBlock);
        break;
    case 1:
        subBlock.frames = runRoad<1>(subBlock);
        break;
    default:
        subBlock.frames = runRoad<0>(subBlock);
        break;
    }
}

} // namespace
