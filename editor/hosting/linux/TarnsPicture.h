// The class of the bundle's pictures.
#pragma once

#import <AppKit/AppKit.h>

// A picture of the bundle, drawn at two pixels a point. On a screen of one pixel a point AppKit
// would pick every other pixel at each painting; this averages them, once.
@interface TarnsPicture : NSImage {
    BOOL halved;
}
@end
