#pragma once

#import <AppKit/NSView.h>

FOUNDATION_EXPORT_CLASS
@interface NSCell : NSObject
- (NSView*)controlView;
@end

FOUNDATION_EXPORT_CLASS
@interface NSActionCell : NSCell
@end
