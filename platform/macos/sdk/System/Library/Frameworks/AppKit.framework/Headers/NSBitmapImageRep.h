#pragma once

#import <Foundation/Foundation.h>

typedef NSUInteger NSBitmapImageFileType;
enum { NSPNGFileType = 4 };

FOUNDATION_EXPORT_CLASS
@interface NSBitmapImageRep : NSObject
- (NSData*)representationUsingType:(NSBitmapImageFileType)storageType
                        properties:(NSDictionary*)properties;
@end
