#pragma once

#import <Foundation/NSObject.h>

FOUNDATION_EXPORT_CLASS
@interface NSArray : NSObject
- (NSUInteger)count;
- (id)objectAtIndex:(NSUInteger)index;
- (id)objectAtIndexedSubscript:(NSUInteger)idx;
@end

FOUNDATION_EXPORT_CLASS
@interface NSMutableArray : NSArray
- (void)addObject:(id)anObject;
@end
