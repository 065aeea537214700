#pragma once

#import <Foundation/Foundation.h>

FOUNDATION_EXPORT NSString* const NSBackgroundColorAttributeName;
FOUNDATION_EXPORT NSString* const NSForegroundColorAttributeName;
FOUNDATION_EXPORT NSString* const NSParagraphStyleAttributeName;
