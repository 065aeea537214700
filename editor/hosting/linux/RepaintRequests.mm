// Requests to paint a changed value. AppKit's own mark is not enough: it would allocate on the
// audio thread that a host may automate from, it would leave the request to a run loop that a host
// of ours doesn't run, and its windows forget what views ask for while they paint.
#import "editor/hosting/linux/TarnsEditorThread.h"

#import "editor/ControlPoint13.h"
#import "editor/TarnsUiView13.h"

namespace {

// `mark` is AppKit's own, for its own thread.
template <typename Mark>
void requestPainting(Mark mark) {
    [TarnsEditorThread requestRepaint];
    if ([TarnsEditorThread isCurrent]) {
        @autoreleasepool {
            mark();
        }
    }
}

} // namespace

@implementation ControlPoint13 (RepaintRequests)

- (void)setNeedsDisplay:(BOOL)needed {
    requestPainting([&] { [super setNeedsDisplay:needed]; });
}

@end

@implementation TarnsUiView13 (RepaintRequests)

- (void)setNeedsDisplay:(BOOL)needed {
    requestPainting([&] { [super setNeedsDisplay:needed]; });
}

@end
