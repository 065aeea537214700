#pragma once

#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/NSObject.h>

FOUNDATION_EXPORT_CLASS
@interface CALayer : NSObject

@property CGColorRef backgroundColor; // retained
@property CGColorRef borderColor;     // retained
@property CGFloat borderWidth;
@property CGFloat cornerRadius;

@end
