#pragma once

#import <Foundation/NSObject.h>

FOUNDATION_EXPORT_CLASS
@interface NSString : NSObject
+ (instancetype)stringWithUTF8String:(const char*)nullTerminatedCString;
- (const char*)UTF8String;
+ (instancetype)stringWithFormat:(NSString*)format, ... __attribute__((format(__NSString__, 1, 2)));
@end

// The class of literals.
FOUNDATION_EXPORT_CLASS
@interface NSConstantString : NSString
@end
