// The floating window of an editor whose host passed a window instead of a view.
#pragma once

#import <AppKit/AppKit.h>

class tveditor13;

@interface tarnsCustomWindow10 : NSWindow {
    tveditor13* _editor;
    void* _winPointerRef; // what the host passed
}

- (void)close; // marks the editor closed, which must be set

@property(nonatomic, assign) tveditor13* editor;
@property(nonatomic, assign, setter=setWinPoinerRef:) void* winPointerRef;

@end
