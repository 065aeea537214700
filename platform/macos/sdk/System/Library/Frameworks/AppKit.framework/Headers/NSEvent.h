#pragma once

#import <Foundation/Foundation.h>

FOUNDATION_EXPORT_CLASS
@interface NSEvent : NSObject
- (NSPoint)locationInWindow;
@end
