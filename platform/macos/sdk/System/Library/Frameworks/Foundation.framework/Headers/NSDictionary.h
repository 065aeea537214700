#pragma once

#import <Foundation/NSObject.h>

@class NSString;

FOUNDATION_EXPORT_CLASS
@interface NSDictionary : NSObject
+ (instancetype)dictionary;
@end

FOUNDATION_EXPORT_CLASS
@interface NSMutableDictionary : NSDictionary
- (void)setValue:(id)value forKey:(NSString*)key;
@end
