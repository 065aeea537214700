#pragma once

#import <Foundation/NSObject.h>

@class NSString;

FOUNDATION_EXPORT NSString* const NSDefaultRunLoopMode;
