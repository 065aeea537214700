#pragma once

#import <AppKit/NSText.h>
#import <AppKit/NSView.h>

@class NSCell;

FOUNDATION_EXPORT_CLASS
@interface NSControl : NSView
- (id)cell;
- (void)setCell:(NSCell*)aCell;
- (float)floatValue;
- (void)setFloatValue:(float)aFloat;
- (void)setStringValue:(NSString*)aString;
- (void)setAlignment:(NSTextAlignment)mode;
@end
