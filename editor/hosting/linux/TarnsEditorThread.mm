#import "editor/hosting/linux/TarnsEditorThread.h"

#import <AppKit/AppKit.h>

#include <pthread.h>

#include <atomic>

// Which thread AppKit's views may be used on; it is the one that started AppKit otherwise.
extern "C" NSThread* GSAppKitThread; // NOLINT(readability-identifier-naming): AppKit's
extern "C" NSThread* GSCurrentThread();

namespace {

std::atomic<pthread_t> editorThread{};

// AppKit keeps it by thread, and sets it up on the one that starts it.
void takeOverContext() {
    static NSGraphicsContext* context = nil;
    if (context == nil) {
        context = [[NSGraphicsContext currentContext] retain];
    } else if ([NSGraphicsContext currentContext] == nil) {
        [NSGraphicsContext setCurrentContext:context];
    }
}

} // namespace

@implementation TarnsEditorThread

+ (void)becomeCurrent {
    editorThread.store(pthread_self(), std::memory_order_relaxed);
    GSAppKitThread = GSCurrentThread();
    takeOverContext();
}

+ (BOOL)isCurrent {
    return pthread_equal(editorThread.load(std::memory_order_relaxed), pthread_self()) != 0;
}

@end
