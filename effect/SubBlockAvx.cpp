// The kernel for machines with AVX: both channels of both chains in one register.
#define TVDELAY_TARGET __attribute__((target("avx")))

#include "effect/SubBlockRoad.h"

TVDELAY_TARGET void renderSubBlockAvx(SubBlock& subBlock) {
    renderSubBlock(subBlock);
}
