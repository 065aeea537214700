#pragma once

#import <AppKit/NSControl.h>

FOUNDATION_EXPORT_CLASS
@interface NSTextField : NSControl
- (void)setBezeled:(BOOL)flag;
- (void)setDrawsBackground:(BOOL)flag;
- (void)setEditable:(BOOL)flag;
- (void)setSelectable:(BOOL)flag;
@end
