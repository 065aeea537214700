#pragma once

#import <Foundation/Foundation.h>

@class NSGraphicsContext;

typedef NSUInteger NSEventType;
enum {
    NSLeftMouseDown = 1,
    NSLeftMouseUp = 2,
    NSLeftMouseDragged = 6,
};
enum : NSUInteger { NSAnyEventMask = ~0ul };

FOUNDATION_EXPORT_CLASS
@interface NSEvent : NSObject
+ (NSEvent*)mouseEventWithType:(NSEventType)type
                      location:(NSPoint)location
                 modifierFlags:(NSUInteger)flags
                     timestamp:(NSTimeInterval)time
                  windowNumber:(NSInteger)wNum
                       context:(NSGraphicsContext*)context
                   eventNumber:(NSInteger)eNum
                    clickCount:(NSInteger)cNum
                      pressure:(float)pressure;
- (NSPoint)locationInWindow;
@end
