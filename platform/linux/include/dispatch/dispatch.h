// Grand Central Dispatch, as far as the sound library uses it. Compile with -fblocks.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define DISPATCH_QUEUE_PRIORITY_HIGH 2
#define DISPATCH_QUEUE_PRIORITY_DEFAULT 0
#define DISPATCH_QUEUE_PRIORITY_LOW (-2)
#define DISPATCH_QUEUE_PRIORITY_BACKGROUND INT16_MIN

typedef struct dispatch_queue_s* dispatch_queue_t;
#ifdef __BLOCKS__ // Foundation includes this header where there are none
typedef void (^dispatch_block_t)(void);
#endif

// The concurrent queue of one of the four priorities, the same at each call and never released.
// Null for any other identifier; `flags` is reserved and 0. Any thread.
dispatch_queue_t dispatch_get_global_queue(intptr_t identifier, uintptr_t flags);

// Copies `block`, returns, and runs the copy on a worker thread: blocks of a higher priority first,
// those of one queue begun in the order they came, several at a time. Takes a lock and allocates.
// Any thread; `queue` must not be null. While no worker thread can be started, blocks wait.
#ifdef __BLOCKS__
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);
#endif

#ifdef __cplusplus
}
#endif
