// All that is replaced in AppKit itself, for every view and window of the process.
#pragma once

@class NSWindow;

// Makes `initByReferencingFile:` of NSImage answer one object a file for the pictures of this
// code's bundle, so that editors opened one after the other don't each keep them. Where AppKit is
// ours, a missing file gives an image that draws nothing. Repeated calls change nothing.
void shareOwnPictures();

// Makes `drawInRect:` of NSImage draw upright in flipped views too, as macOS does, where AppKit is
// ours.
void drawPicturesUpright();

// Gives back the windows of the X server in which AppKit keeps drawn pictures. They come back with
// the next painting.
void dropPictureCaches();

// Makes `initWithWindowRef:` of NSWindow answer nil for `view`, where it would look for a handle of
// the X server behind the pointer. Holds until it is called again, for that pointer alone.
void refuseAsWindowReference(void* view);

// Makes `keyWindow` of NSApplication answer `window`, where AppKit knows none itself: it learns of
// key windows only once the application has finished launching, which no host of ours lets it do.
// Keys go nowhere else. nil takes it back.
void useAsKeyWindow(NSWindow* window);
