#pragma once

#import <Foundation/Foundation.h>

typedef NSUInteger NSCompositingOperation;
enum {
    NSCompositeClear = 0,
    NSCompositeCopy = 1,
    NSCompositeSourceOver = 2,
};

typedef NSUInteger NSBackingStoreType;
enum { NSBackingStoreBuffered = 2 };

typedef NSInteger NSWindowOrderingMode;
enum {
    NSWindowBelow = -1,
    NSWindowOut = 0,
    NSWindowAbove = 1,
};

FOUNDATION_EXPORT void NSRectFillUsingOperation(NSRect aRect, NSCompositingOperation op);
