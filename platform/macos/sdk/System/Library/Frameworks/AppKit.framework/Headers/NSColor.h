#pragma once

#import <Foundation/Foundation.h>

FOUNDATION_EXPORT_CLASS
@interface NSColor : NSObject
+ (NSColor*)blackColor;
+ (NSColor*)clearColor;
+ (NSColor*)whiteColor;
+ (NSColor*)colorWithCalibratedRed:(CGFloat)red
                             green:(CGFloat)green
                              blue:(CGFloat)blue
                             alpha:(CGFloat)alpha;
+ (NSColor*)colorWithSRGBRed:(CGFloat)red
                       green:(CGFloat)green
                        blue:(CGFloat)blue
                       alpha:(CGFloat)alpha;
- (CGColorRef)CGColor;
- (void)set;
@end
