// The kernel for any x86-64: both channels of a chain in one register.
#define TVDELAY_TARGET

#include "effect/SubBlockRoad.h"

void renderSubBlockSse2(SubBlock& subBlock) {
    renderSubBlock(subBlock);
}
