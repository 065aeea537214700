#pragma once

#import <Foundation/NSObject.h>

@class NSString;

FOUNDATION_EXPORT_CLASS
@interface NSProcessInfo : NSObject
+ (NSProcessInfo*)processInfo;
- (NSString*)operatingSystemVersionString;
@end
