#import "editor/hosting/linux/TarnsPicture.h"

#include <algorithm>

namespace {

// Fractional sizes come from the file's resolution, which counts in whole pixels a metre.
bool isHalfOf(CGFloat points, NSInteger pixels) {
    return points * 2.0 == static_cast<CGFloat>(pixels);
}

bool canBeHalved(NSBitmapImageRep* bitmap) {
    return [bitmap bitsPerSample] == 8 && ![bitmap isPlanar] && [bitmap samplesPerPixel] <= 4;
}

// One pixel of the four at `first`, `step` bytes apart across and `row` bytes apart down. Colours
// count by their opacity where they are not premultiplied by it.
void average(const unsigned char* first, NSInteger step, NSInteger row, NSInteger samples,
             bool straightAlpha, unsigned char* result) {
    const unsigned char* const pixels[] = {first, first + step, first + row, first + row + step};
    const NSInteger alpha = samples - 1;
    unsigned opacity = 0;
    for (const unsigned char* pixel : pixels) {
        opacity += straightAlpha ? pixel[alpha] : 1u;
    }
    for (NSInteger sample = 0; sample < samples; ++sample) {
        unsigned sum = 0;
        for (const unsigned char* pixel : pixels) {
            sum += pixel[sample] * (straightAlpha && sample != alpha ? pixel[alpha] : 1u);
        }
        const unsigned whole = straightAlpha && sample != alpha ? opacity : 4u;
        result[sample] = static_cast<unsigned char>(whole == 0 ? 0 : (sum + whole / 2) / whole);
    }
}

NSBitmapImageRep* halfOf(NSBitmapImageRep* bitmap) {
    const NSInteger width = [bitmap pixelsWide] / 2;
    const NSInteger height = [bitmap pixelsHigh] / 2;
    const NSInteger samples = [bitmap samplesPerPixel];
    NSBitmapImageRep* const half =
        [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                pixelsWide:width
                                                pixelsHigh:height
                                             bitsPerSample:8
                                           samplesPerPixel:samples
                                                  hasAlpha:[bitmap hasAlpha]
                                                  isPlanar:NO
                                            colorSpaceName:[bitmap colorSpaceName]
                                              bitmapFormat:[bitmap bitmapFormat]
                                               bytesPerRow:0
                                              bitsPerPixel:0];
    const bool straightAlpha =
        [bitmap hasAlpha] && ([bitmap bitmapFormat] & NSAlphaNonpremultipliedBitmapFormat) != 0;
    const NSInteger step = [bitmap bitsPerPixel] / 8;
    const NSInteger row = [bitmap bytesPerRow];
    for (NSInteger y = 0; y < height; ++y) {
        for (NSInteger x = 0; x < width; ++x) {
            average([bitmap bitmapData] + 2 * y * row + 2 * x * step, step, row, samples,
                    straightAlpha,
                    [half bitmapData] + y * [half bytesPerRow] + x * [half bitsPerPixel] / 8);
        }
    }
    [half setSize:NSMakeSize(static_cast<CGFloat>(width), static_cast<CGFloat>(height))];
    return [half autorelease];
}

} // namespace

@implementation TarnsPicture

- (void)fitInto:(NSSize)pixels {
    NSBitmapImageRep* const bitmap =
        static_cast<NSBitmapImageRep*>([[self representations] firstObject]);
    if (![bitmap isKindOfClass:[NSBitmapImageRep class]] || !canBeHalved(bitmap) ||
        !isHalfOf(pixels.width, [bitmap pixelsWide]) ||
        !isHalfOf(pixels.height, [bitmap pixelsHigh])) {
        return;
    }
    NSBitmapImageRep* const half = halfOf(bitmap);
    [self removeRepresentation:bitmap];
    [self addRepresentation:half];
    [self setSize:[half size]];
    halved = YES;
}

- (void)drawInRect:(NSRect)target
          fromRect:(NSRect)source
         operation:(NSCompositingOperation)operation
          fraction:(CGFloat)fraction {
    if (!halved) {
        [self fitInto:[[NSView focusView] convertSize:target.size toView:nil]];
    }
    [super drawInRect:target fromRect:source operation:operation fraction:fraction];
}

@end
