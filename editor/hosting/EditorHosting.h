// Where systems differ in showing an editor inside a host. All of it is for the host's
// user-interface thread.
#pragma once

#ifdef __OBJC__
@class NSView;
#else
struct NSView;
#endif
class tveditor13;

// Makes AppKit ready for views and begins a use of them. False where nothing can be shown; AppKit
// is then out of bounds. A second begin changes nothing.
bool prepareEditorViews();
// Ends that use, as `editorShown` does.
void finishEditorViews();

// What a host passed to the editor's `open`, as AppKit knows it: a view or a window reference. A
// handle of the system's own windows becomes a view that is made in that window. Null when there is
// nothing to show the editor in.
void* hostObjectFor(void* passed);

// For a view that sizes what it draws by the rectangle that AppKit hands it, once it is made: keeps
// that rectangle within the view's bounds where AppKit would let it reach beyond them. editorShown
// does it for the root view and all that is in it.
void keepDrawingWithinBounds(NSView* view);

// To be told after each `open` and at each `close` of an editor, and when it is destroyed.
void editorShown(const tveditor13* editor, NSView* rootView);
void editorClosed(const tveditor13* editor);

// Delivers what waits for the editors of this process and paints what has changed. To be called
// some 30 times a second. Does nothing where the host's own loop does it.
void deliverEditorEvents();
