#import "editor/hosting/linux/TarnsPicture.h"

#include <cmath>

namespace {

// A file's resolution counts in whole pixels a metre, so its size in points is hardly ever whole.
bool isAbout(CGFloat points, NSInteger pixels) {
    return std::abs(points - static_cast<CGFloat>(pixels)) < 0.1;
}

bool canBeHalved(NSImageRep* representation) {
    if (![representation isKindOfClass:[NSBitmapImageRep class]]) {
        return false;
    }
    auto* const bitmap = static_cast<NSBitmapImageRep*>(representation);
    return [bitmap bitsPerSample] == 8 && ![bitmap isPlanar] && [bitmap samplesPerPixel] <= 4 &&
           [bitmap pixelsWide] % 2 == 0 && [bitmap pixelsHigh] % 2 == 0;
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

@synthesize file = _file;

- (void)dealloc {
    [_file release];
    [_half release];
    [_whole release];
    [super dealloc];
}

- (void)makeHalf {
    _looked = YES;
    NSImageRep* const whole = [[self representations] firstObject];
    if (canBeHalved(whole)) {
        _half = [halfOf(static_cast<NSBitmapImageRep*>(whole)) retain];
        [self removeRepresentation:whole];
        [self addRepresentation:_half];
        [self setSize:[_half size]];
    }
}

- (NSImageRep*)whole {
    NSImageRep* const read =
        _whole == nil && _file != nil ? [NSImageRep imageRepWithContentsOfFile:_file] : nil;
    if (read != nil) {
        [read setSize:[_half size]];
        [self addRepresentation:read];
        _whole = [read retain];
    }
    return _whole != nil ? _whole : _half;
}

- (NSImageRep*)bestRepresentationForRect:(NSRect)rect
                                 context:(NSGraphicsContext*)context
                                   hints:(NSDictionary*)hints {
    if (_half == nil) {
        return [super bestRepresentationForRect:rect context:context hints:hints];
    }
    const NSSize pixels = [[NSView focusView] convertSize:rect.size toView:nil];
    return isAbout(pixels.width, [_half pixelsWide]) && isAbout(pixels.height, [_half pixelsHigh])
               ? _half
               : [self whole];
}

// All other ways of drawing lead here.
- (void)drawInRect:(NSRect)target
          fromRect:(NSRect)source
         operation:(NSCompositingOperation)operation
          fraction:(CGFloat)fraction
    respectFlipped:(BOOL)respectFlipped
             hints:(NSDictionary*)hints {
    if (!_looked) {
        [self makeHalf];
    }
    [super drawInRect:target
              fromRect:source
             operation:operation
              fraction:fraction
        respectFlipped:respectFlipped
                 hints:hints];
}

@end
