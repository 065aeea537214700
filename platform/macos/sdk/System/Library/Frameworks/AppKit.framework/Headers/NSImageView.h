#pragma once

#import <AppKit/NSControl.h>

FOUNDATION_EXPORT_CLASS
@interface NSImageView : NSControl
@end
