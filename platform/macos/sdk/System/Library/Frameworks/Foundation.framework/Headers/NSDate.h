#pragma once

#import <Foundation/NSObject.h>

typedef double NSTimeInterval; // seconds

FOUNDATION_EXPORT_CLASS
@interface NSDate : NSObject
+ (instancetype)dateWithTimeIntervalSinceNow:(NSTimeInterval)secs;
@end
