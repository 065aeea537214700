// The class of the bundle's pictures.
#pragma once

#import <AppKit/AppKit.h>

// A picture of the bundle, drawn at two pixels a point. On a screen of one pixel a point AppKit
// would pick every other pixel at each painting; this averages them, once, and reads its file again
// where it is drawn at another size.
@interface TarnsPicture : NSImage {
    NSString* _file;         // retained
    NSBitmapImageRep* _half; // nil before the first drawing, and where there is none
    NSImageRep* _whole;      // read again beside `_half`; nil until it is needed
    BOOL _looked;            // for what could be halved
}

// The file that it references.
@property(nonatomic, retain) NSString* file;

@end
