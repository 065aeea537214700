#pragma once

#import <AppKit/NSResponder.h>

@class NSWindow;

typedef struct _NSModalSession* NSModalSession;

FOUNDATION_EXPORT_CLASS
@interface NSApplication : NSResponder
- (NSModalSession)beginModalSessionForWindow:(NSWindow*)theWindow;
- (NSInteger)runModalSession:(NSModalSession)session;
- (void)endModalSession:(NSModalSession)session;
@end

@protocol NSApplicationDelegate <NSObject>
@optional
- (void)applicationDidFinishLaunching:(NSNotification*)notification;
@end

FOUNDATION_EXPORT NSApplication* NSApp;
