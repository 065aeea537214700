#pragma once

#import <AppKit/NSText.h>

FOUNDATION_EXPORT_CLASS
@interface NSParagraphStyle : NSObject
+ (NSParagraphStyle*)defaultParagraphStyle;
@end

FOUNDATION_EXPORT_CLASS
@interface NSMutableParagraphStyle : NSParagraphStyle
- (void)setAlignment:(NSTextAlignment)alignment;
@end
