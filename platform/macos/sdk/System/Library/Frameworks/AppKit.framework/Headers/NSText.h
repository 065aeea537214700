#pragma once

#import <Foundation/Foundation.h>

typedef NSUInteger NSTextAlignment;
enum {
    NSLeftTextAlignment = 0,
    NSRightTextAlignment = 1,
    NSCenterTextAlignment = 2,
};
