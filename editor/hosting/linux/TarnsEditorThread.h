// The thread that the editors live on.
#pragma once

#import <Foundation/Foundation.h>

// Where a process has loaded this code from several files, classes are those of the first one: what
// all of them have to agree on lies behind class methods.
@interface TarnsEditorThread : NSObject

// Makes the calling thread the editors' one: the thread that the host last opened an editor on, or
// sent an idle call. The views of AppKit follow.
+ (void)becomeCurrent;
+ (BOOL)isCurrent; // any thread; neither waits nor allocates

@end
