// The thread that the editors live on.
#pragma once

#import <Foundation/Foundation.h>

#include <cstdint>

// The thread that the editors live on, and requests to paint them. Where a process has loaded this
// code from several files, classes are those of the first one: what all of them have to agree on
// lies behind class methods.
@interface TarnsEditorThread : NSObject

// Makes the calling thread the editors' one: the thread that the host last opened an editor on, or
// sent an idle call. The views of AppKit follow.
+ (void)becomeCurrent;
+ (BOOL)isCurrent; // any thread

// Any thread. Neither waits nor allocates, so that audio threads may ask. What the editors' thread
// asks for while it paints does not count.
+ (void)requestRepaint;
+ (std::uint64_t)latestRepaintRequest; // differs after each request

+ (void)beginPainting;
+ (void)endPainting;

@end
