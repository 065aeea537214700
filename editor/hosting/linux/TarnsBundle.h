// The class of this code's bundle.
#pragma once

#import <Foundation/Foundation.h>

// This code's bundle. It carries no property list; its identifier is the one of the macOS bundle.
@interface TarnsBundle : NSBundle
@end
