// Events of a mouse that nobody moves.
#pragma once

#import <AppKit/AppKit.h>

// One at a place of a window, in points.
NSEvent* mouseEvent(NSEventType type, NSWindow* window, CGFloat x, CGFloat y);
