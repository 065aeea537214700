#include "editor/hosting/EditorHosting.h"

#import <AppKit/AppKit.h>

// Declared by newer systems' headers alone. Of views, those of macOS 10.9 and later answer it.
@protocol ClippingView
- (void)setClipsToBounds:(BOOL)clips;
@end

// The host's own loop delivers events to views in its windows: there is nothing to add.

bool prepareEditorViews() {
    return true;
}

void finishEditorViews() {}

void* hostObjectFor(void* passed) {
    return passed;
}

// In hosts that were built for macOS 14, views don't clip unless they are told to, and are handed
// as much of the window as is to be drawn.
void keepDrawingWithinBounds(NSView* view) {
    if ([view respondsToSelector:@selector(setClipsToBounds:)]) {
        [static_cast<NSView<ClippingView>*>(view) setClipsToBounds:YES];
    }
}

void editorShown(const tveditor13* editor, NSView* rootView) {
    keepDrawingWithinBounds(rootView);
    NSArray* const subviews = [rootView subviews];
    for (NSUInteger i = 0; i < [subviews count]; ++i) {
        editorShown(editor, [subviews objectAtIndex:i]);
    }
}

void editorClosed(const tveditor13* editor) {}

void deliverEditorEvents() {}
