#pragma once

#import <Foundation/NSObject.h>

@class NSString;

FOUNDATION_EXPORT_CLASS
@interface NSScanner : NSObject
+ (id)scannerWithString:(NSString*)string;
- (void)setScanLocation:(NSUInteger)pos;
- (BOOL)scanHexInt:(unsigned*)result;
@end
