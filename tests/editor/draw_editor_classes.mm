// Draws the classes that no running editor makes, in windows on a screen of its own:
//   draw_editor_classes FOLDER
#include "editor/LoadingWindow.h"
#import "editor/TarnsCustomDisplayView10.h"
#import "editor/TarnsCustomSlider13.h"
#import "editor/TarnsCustomSliderCell10.h"
#import "editor/TarnsUiView13.h"
#import "editor/hosting/EditorHosting.h"
#import "editor/lWindowView9.h"
#import "editor/sTextView13.h"
#include "tests/editor/ViewWindow.h"
#include "tests/support/screen/XServer.h"

#include <CoreFoundation/CFString.h>
#include <CoreFoundation/CFUserNotification.h>

#include <png.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

bool savePng(const ScreenPart& part, const std::string& path) {
    png_image image;
    std::memset(&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(part.width);
    image.height = static_cast<png_uint_32>(part.height);
    image.format = PNG_FORMAT_RGBA;
    return png_image_write_to_file(&image, path.c_str(), 0, part.pixels.data(), 0, nullptr) != 0;
}

NSView* slider(NSRect frame, float value) {
    TarnsCustomSlider13* const made =
        [[[TarnsCustomSlider13 alloc] initWithFrame:frame] autorelease];
    TarnsCustomSliderCell10* const cell = [[[TarnsCustomSliderCell10 alloc] init] autorelease];
    [cell setSliderCellWidth:static_cast<int32_t>(frame.size.width)];
    [cell setSliderCellHeight:static_cast<int32_t>(frame.size.height)];
    [made setCell:cell];
    [made setFloatValue:value];
    return made;
}

NSView* number(NSRect frame, int32_t value) {
    return [[[TarnsCustomDisplayView10 alloc] initWithFrame:frame andValue:value] autorelease];
}

// The sliders and the displays in one window.
ScreenPart displays() {
    NSView* const page = [[[NSView alloc] initWithFrame:NSMakeRect(0, 0, 620, 260)] autorelease];
    const float values[] = {0.0f, 0.5f, 1.0f};
    for (int i = 0; i < 3; ++i) {
        [page addSubview:slider(NSMakeRect(40, 40 + 50 * i, 150, 21), values[i])];
    }
    const int32_t numbers[] = {-1234, 0, 4380};
    for (int i = 0; i < 3; ++i) {
        [page addSubview:number(NSMakeRect(260, 40 + 50 * i, 120, 21), numbers[i])];
    }
    TarnsUiView13* const owner = [[[TarnsUiView13 alloc] initWithFrame:NSZeroRect
                                                             andEffect:nullptr] autorelease];
    [owner setVolumeSliderVal:87];
    sTextView13* const levels =
        [[[sTextView13 alloc] initWithFrame:NSMakeRect(0, 0, 620, 260)] autorelease];
    [levels setOwner:owner];
    [page addSubview:levels];
    ViewWindow window(page, NSMakeSize(620, 260));
    return window.screen();
}

ScreenPart loading() {
    LoadingWindow loading{};
    loading.open();
    for (int step = 0; step < 73; ++step) {
        loading.advance();
    }
    const ScreenPart shown = screenOf(loading.window);
    loading.close();
    return shown;
}

} // namespace

// Looks at an alert while it is up.
@interface AlertLook : NSObject {
@public
    ScreenPart shown;
}
@end

@implementation AlertLook

- (void)look:(NSTimer*)timer {
    shown = screenOf([NSApp modalWindow]);
}

@end

namespace {

ScreenPart alert() {
    AlertLook* const look = [[[AlertLook alloc] init] autorelease];
    NSTimer* const timer = [NSTimer timerWithTimeInterval:0.5
                                                   target:look
                                                 selector:@selector(look:)
                                                 userInfo:nil
                                                  repeats:YES];
    [[NSRunLoop currentRunLoop] addTimer:timer forMode:NSModalPanelRunLoopMode];
    CFUserNotificationDisplayAlert(1.2, kCFUserNotificationPlainAlertLevel, nullptr, nullptr,
                                   nullptr, CFSTR("Hello"), CFSTR("couldn't load nib"), CFSTR("OK"),
                                   nullptr, nullptr, nullptr);
    [timer invalidate];
    return look->shown;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("draw_editor_classes: name the folder for the pictures, as in: "
                   "draw_editor_classes docs/images\n",
                   stderr);
        return 2;
    }
    sharedXServer();
    if (!prepareEditorViews()) {
        std::fputs("draw_editor_classes: AppKit does not start; is GNUstep's back end installed?\n",
                   stderr);
        return 2;
    }
    @autoreleasepool {
        const std::string folder = argv[1];
        if (!savePng(displays(), folder + "/editor-classes.png") ||
            !savePng(loading(), folder + "/editor-classes-loading.png") ||
            !savePng(alert(), folder + "/editor-classes-alert.png")) {
            std::fprintf(stderr,
                         "draw_editor_classes: can't write into %s; name a folder that is there\n",
                         argv[1]);
            return 2;
        }
    }
    return 0;
}
