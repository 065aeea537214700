#pragma once

#import <Foundation/NSObject.h>

@class NSString;

FOUNDATION_EXPORT_CLASS
@interface NSData : NSObject
- (BOOL)writeToFile:(NSString*)path atomically:(BOOL)useAuxiliaryFile;
@end
