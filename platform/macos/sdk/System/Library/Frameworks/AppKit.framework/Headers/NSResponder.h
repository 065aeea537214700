#pragma once

#import <Foundation/Foundation.h>

@class NSEvent;

FOUNDATION_EXPORT_CLASS
@interface NSResponder : NSObject
- (void)mouseDown:(NSEvent*)theEvent;
- (void)mouseDragged:(NSEvent*)theEvent;
- (void)mouseUp:(NSEvent*)theEvent;
@end
