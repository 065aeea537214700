#import "platform/EditorHosting.h"

#include "platform/EditorEvents.h"
#include "platform/linux/OwnBundle.h"
#include "platform/linux/OwnPictures.h"
#import "platform/linux/TarnsAppKit.h"
#import "platform/linux/TarnsEditorThread.h"
#import "platform/linux/TarnsX11HostWindow.h"
#include "platform/linux/WindowReference.h"
#include "platform/linux/X11Errors.h"
#include "platform/linux/X11Handle.h"

#import <GNUstepGUI/GSDisplayServer.h>

#include <algorithm>
#include <vector>

namespace {

struct ShownEditor {
    const tveditor13* editor;
    NSView* rootView; // never released, so it outlives its place here
};

std::vector<ShownEditor>& shownEditors() {
    static auto* const editors = new std::vector<ShownEditor>;
    return *editors;
}

Display* serverConnection() {
    return static_cast<Display*>([GSCurrentServer() serverDevice]);
}

void deliverEvents() {
    NSDate* const now = [NSDate distantPast];
    NSEvent* event;
    while ((event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                       untilDate:now
                                          inMode:NSDefaultRunLoopMode
                                         dequeue:YES]) != nil) {
        [NSApp sendEvent:event];
    }
}

void paintEditors() {
    static std::uint64_t painted = 0;
    const std::uint64_t requested = [TarnsEditorThread latestRepaintRequest];
    if (requested == painted) {
        return;
    }
    painted = requested;
    for (const ShownEditor& shown : shownEditors()) {
        NSWindow* const window = [shown.rootView window];
        if ([window isVisible]) {
            [shown.rootView setNeedsDisplay:YES];
            [window setViewsNeedDisplay:YES];
            [window displayIfNeeded];
        }
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

void takeAway(NSView* rootView) {
    NSWindow* const window = [rootView window];
    if ([window isKindOfClass:[TarnsX11HostWindow class]]) {
        [rootView removeFromSuperview];
        [window close];
        [window release];
    }
}

} // namespace

bool prepareEditorViews() {
    if (![TarnsAppKit start]) {
        return false;
    }
    [TarnsEditorThread becomeCurrent];
    registerOwnBundle();
    shareOwnPictures();
    refuseForeignWindowReferences();
    return true;
}

void* hostObjectFor(void* passed) {
    if (passed == nullptr || !fitsX11Handle(passed)) {
        return passed;
    }
    return viewInside(reinterpret_cast<Window>(passed));
}

void editorShown(const tveditor13* editor, NSView* rootView) {
    shownEditors().push_back({editor, rootView});
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
    @autoreleasepool {
        std::for_each(closed, editors.end(),
                      [](const ShownEditor& shown) { takeAway(shown.rootView); });
        editors.erase(closed, editors.end());
        if (editors.empty()) {
            dropPictureCaches();
        }
    }
    XFlush(serverConnection());
}

void deliverEditorEvents() {
    if (shownEditors().empty()) {
        return;
    }
    [TarnsEditorThread becomeCurrent];
    @autoreleasepool {
        if ([TarnsAppKit isOurs]) {
            guarded(deliverEvents);
        }
        [TarnsEditorThread beginPainting];
        guarded(paintEditors);
        [TarnsEditorThread endPainting];
    }
}
