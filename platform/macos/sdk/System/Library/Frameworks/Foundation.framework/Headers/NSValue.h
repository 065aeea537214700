#pragma once

#import <Foundation/NSObject.h>

FOUNDATION_EXPORT_CLASS
@interface NSNumber : NSObject
+ (NSNumber*)numberWithInt:(int)value;
- (int)intValue;
@end
