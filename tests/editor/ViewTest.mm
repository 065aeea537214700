#include "tests/editor/ViewTest.h"

#import "editor/hosting/EditorHosting.h"
#include "tests/support/screen/XServer.h"

#include <stdexcept>

ViewTest::ViewTest() {
    sharedXServer();
    if (!prepareEditorViews()) {
        throw std::runtime_error("AppKit does not start");
    }
    pool_ = [[NSAutoreleasePool alloc] init];
}

ViewTest::~ViewTest() {
    [pool_ release];
}

NSImage* plainImage(NSColor* colour, NSSize size) {
    NSImage* const image = [[[NSImage alloc] initWithSize:size] autorelease];
    [image lockFocus];
    [colour set];
    NSRectFill(NSMakeRect(0, 0, size.width, size.height));
    [image unlockFocus];
    return image;
}

NSImage* transparentAtTheLeft(NSColor* colour, NSSize size) {
    NSImage* const image = [[[NSImage alloc] initWithSize:size] autorelease];
    [image lockFocus];
    [colour set];
    NSRectFill(NSMakeRect(size.width / 2, 0, size.width / 2, size.height));
    [image unlockFocus];
    return image;
}

bool sameColour(NSColor* one, NSColor* other) {
    NSColor* const first = [one colorUsingColorSpaceName:NSCalibratedRGBColorSpace];
    NSColor* const second = [other colorUsingColorSpaceName:NSCalibratedRGBColorSpace];
    return [first redComponent] == [second redComponent] &&
           [first greenComponent] == [second greenComponent] &&
           [first blueComponent] == [second blueComponent] &&
           [first alphaComponent] == [second alphaComponent];
}
