#include "editor/hosting/EditorHosting.h"

#include "editor/hosting/linux/AppKitPatches.h"
#include "editor/hosting/linux/EditorViewPatches.h"
#include "editor/hosting/linux/HostSignals.h"
#include "editor/hosting/linux/OwnBundle.h"
#include "editor/hosting/linux/PaintedControls.h"
#import "editor/hosting/linux/TarnsAppKit.h"
#import "editor/hosting/linux/TarnsEditorThread.h"
#import "editor/hosting/linux/TarnsX11HostWindow.h"
#include "editor/hosting/linux/X11Errors.h"
#include "editor/hosting/linux/X11Handle.h"

#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSDisplayServer.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace {

struct ShownEditor {
    const tveditor13* editor;
    NSView* rootView;  // never released, so it outlives its place here
    NSArray* controls; // retained
};

std::vector<ShownEditor>& shownEditors() {
    static auto* const editors = new std::vector<ShownEditor>;
    return *editors;
}

Display* serverConnection() {
    return static_cast<Display*>([GSCurrentServer() serverDevice]);
}

std::vector<NSEvent*> waitingEvents() {
    NSDate* const now = [NSDate distantPast];
    std::vector<NSEvent*> events;
    while (NSEvent* const event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                                     untilDate:now
                                                        inMode:NSDefaultRunLoopMode
                                                       dequeue:YES]) {
        events.push_back(event);
    }
    return events;
}

bool isPress(NSEvent* event) {
    return [event type] == NSLeftMouseDown;
}

bool isDragOrRelease(NSEvent* event) {
    return [event type] == NSLeftMouseDragged || [event type] == NSLeftMouseUp;
}

// AppKit hands the first press of a process on behind all that came with it. A drag or a release
// without a press tells: the press goes back ahead of it. All else stays in its order.
void putPressBack(std::vector<NSEvent*>& events, bool buttonIsDown) {
    if (buttonIsDown) {
        return;
    }
    const auto first = std::find_if(events.begin(), events.end(), [](NSEvent* event) {
        return isPress(event) || isDragOrRelease(event);
    });
    const auto last = std::find_if(events.rbegin(), events.rend(), isPress);
    if (last != events.rend() && !isPress(*first)) {
        std::rotate(first, std::prev(last.base()), last.base());
    }
}

void deliverEvents() {
    static bool buttonIsDown = false;
    std::vector<NSEvent*> events = waitingEvents();
    putPressBack(events, buttonIsDown);
    for (NSEvent* const event : events) {
        buttonIsDown = isPress(event) || (buttonIsDown && [event type] != NSLeftMouseUp);
        [NSApp sendEvent:event];
    }
}

// What AppKit asks for after a change of size, say, and each control that has changed.
void paint(const ShownEditor& shown) {
    NSWindow* const window = [shown.rootView window];
    if (![window isVisible]) {
        return;
    }
    [window displayIfNeeded];
    for (NSView* const control in shown.controls) {
        if (!isPaintedAsItStands(control)) {
            [shown.rootView displayRect:[control frame]];
        }
    }
}

void paintEditors() {
    for (const ShownEditor& shown : shownEditors()) {
        paint(shown);
    }
}

// What a view raises must not reach the host, which knows no such exceptions.
void guarded(void (*work)()) {
    @try {
        work();
    } @catch (NSException* exception) {
    }
}

NSView* viewInside(Window window) {
    if (!windowExists(serverConnection(), window)) {
        return nil;
    }
    return [[[TarnsX11HostWindow alloc] initInside:window] contentView];
}

void takeAway(const ShownEditor& shown) {
    for (NSView* const control in shown.controls) {
        forgetControl(control);
    }
    [shown.controls release];
    NSWindow* const window = [shown.rootView window];
    if ([window isKindOfClass:[TarnsX11HostWindow class]]) {
        [shown.rootView removeFromSuperview];
        [window close];
        [window release];
    }
}

} // namespace

bool prepareEditorViews() {
    const HostSignals signalsOfHost; // ahead of the first message to any object
    if (![TarnsAppKit start]) {
        return false;
    }
    beginQuietErrors(serverConnection());
    [TarnsEditorThread becomeCurrent];
    registerOwnBundle();
    shareOwnPictures();
    drawPicturesUpright();
    patchEditorDrawing();
    return true;
}

void finishEditorViews() {
    endQuietErrors();
}

void* hostObjectFor(void* passed) {
    void* const object = passed != nullptr && fitsX11Handle(passed)
                             ? viewInside(reinterpret_cast<Window>(passed))
                             : passed;
    refuseAsWindowReference(object);
    return object;
}

// GNUstep's never reaches beyond them.
void keepDrawingWithinBounds(NSView* view) {}

void editorShown(const tveditor13* editor, NSView* rootView) {
    if ([[rootView window] isKindOfClass:[TarnsX11HostWindow class]]) {
        // At the upper left whatever size the host gives the window.
        [rootView setAutoresizingMask:NSViewMinYMargin];
        [[rootView superview] setNeedsDisplay:YES];
    }
    NSArray* const controls = [controlsIn(rootView) retain];
    for (NSView* const control in controls) {
        watchControl(control);
    }
    shownEditors().push_back({editor, rootView, controls});
    guarded(paintEditors); // a host's first idle call may be a while off
    finishEditorViews();
}

void editorClosed(const tveditor13* editor) {
    std::vector<ShownEditor>& editors = shownEditors();
    const auto closed =
        std::stable_partition(editors.begin(), editors.end(), [editor](const ShownEditor& shown) {
            return shown.editor != editor;
        });
    if (closed == editors.end()) {
        return;
    }
    beginQuietErrors(serverConnection());
    @autoreleasepool {
        std::for_each(closed, editors.end(), takeAway);
        editors.erase(closed, editors.end());
        if (editors.empty()) {
            dropPictureCaches();
        }
    }
    endQuietErrors();
}

void deliverEditorEvents() {
    if (shownEditors().empty()) {
        return;
    }
    beginQuietErrors(serverConnection());
    [TarnsEditorThread becomeCurrent];
    @autoreleasepool {
        if ([TarnsAppKit isOurs]) {
            guarded(deliverEvents);
        }
        guarded(paintEditors);
    }
    endQuietErrors();
}
