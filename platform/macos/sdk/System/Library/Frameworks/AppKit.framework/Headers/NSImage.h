#pragma once

#import <AppKit/NSGraphics.h>

FOUNDATION_EXPORT_CLASS
@interface NSImage : NSObject
- (id)initByReferencingFile:(NSString*)fileName;
- (void)drawInRect:(NSRect)rect;
- (void)drawInRect:(NSRect)dstRect
          fromRect:(NSRect)srcRect
         operation:(NSCompositingOperation)op
          fraction:(CGFloat)delta;
- (void)compositeToPoint:(NSPoint)point operation:(NSCompositingOperation)op;
@end

@interface NSBundle (NSBundleImageExtension)
- (NSString*)pathForImageResource:(NSString*)name;
@end
