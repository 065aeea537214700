#pragma once

#import <Foundation/Foundation.h>

FOUNDATION_EXPORT_CLASS
@interface NSScreen : NSObject
+ (NSArray*)screens;
+ (NSScreen*)mainScreen;
- (NSRect)frame;
@end
