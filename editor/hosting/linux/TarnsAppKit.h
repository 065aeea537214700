// Starts AppKit in a host that has none of its own.
#pragma once

#import <Foundation/Foundation.h>

// AppKit in a host that has none of its own. The user-interface thread.
@interface TarnsAppKit : NSObject

// Starts it, once. NO when it can't be: there is no display, or no back end for it.
+ (BOOL)start;

// YES when this started it: its events are then ours to deliver.
+ (BOOL)isOurs;

@end
