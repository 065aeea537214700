#pragma once

#import <AppKit/NSResponder.h>

@class NSWindow;

typedef struct _NSModalSession* NSModalSession;

typedef NSInteger NSApplicationActivationPolicy;
enum { NSApplicationActivationPolicyRegular = 0 };

@class NSDate;
@class NSEvent;
@class NSString;

FOUNDATION_EXPORT_CLASS
@interface NSApplication : NSResponder
+ (NSApplication*)sharedApplication;
- (NSEvent*)nextEventMatchingMask:(NSUInteger)mask
                        untilDate:(NSDate*)expiration
                           inMode:(NSString*)mode
                          dequeue:(BOOL)deqFlag;
- (void)sendEvent:(NSEvent*)theEvent;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy;
- (void)finishLaunching;
- (void)activateIgnoringOtherApps:(BOOL)flag;
- (NSModalSession)beginModalSessionForWindow:(NSWindow*)theWindow;
- (NSInteger)runModalSession:(NSModalSession)session;
- (void)endModalSession:(NSModalSession)session;
@end

@protocol NSApplicationDelegate <NSObject>
@optional
- (void)applicationDidFinishLaunching:(NSNotification*)notification;
@end

FOUNDATION_EXPORT NSApplication* NSApp;
FOUNDATION_EXPORT const double NSAppKitVersionNumber;
