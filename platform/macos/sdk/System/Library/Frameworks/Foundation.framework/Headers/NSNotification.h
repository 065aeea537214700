#pragma once

#import <Foundation/NSObject.h>

FOUNDATION_EXPORT_CLASS
@interface NSNotification : NSObject
@end
