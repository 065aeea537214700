#pragma once

#import <Foundation/Foundation.h>

@interface NSString (NSStringDrawing)
- (void)drawAtPoint:(NSPoint)point withAttributes:(NSDictionary*)attrs;
- (void)drawInRect:(NSRect)rect withAttributes:(NSDictionary*)attrs;
@end
