// The class of this code's bundle.
#pragma once

#import <Foundation/Foundation.h>

// It carries no property list; its identifier is the one of the macOS bundle.
@interface TarnsBundle : NSBundle

// `folder` is the absolute path of what holds the Resources, in the bytes of the file system, which
// need not be text. nil when there is no such folder.
- (id)initWithFolder:(const char*)folder;

@end
