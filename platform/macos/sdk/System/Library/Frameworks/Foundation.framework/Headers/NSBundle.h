#pragma once

#import <Foundation/NSObject.h>

@class NSArray;
@class NSString;

FOUNDATION_EXPORT_CLASS
@interface NSBundle : NSObject
+ (NSBundle*)bundleForClass:(Class)aClass;
+ (NSBundle*)bundleWithIdentifier:(NSString*)identifier;
- (NSString*)pathForResource:(NSString*)name ofType:(NSString*)ext;
@end
