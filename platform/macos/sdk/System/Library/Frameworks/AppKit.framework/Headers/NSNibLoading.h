#pragma once

#import <Foundation/Foundation.h>

#ifndef IBOutlet
#define IBOutlet
#endif

@interface NSObject (NSNibAwaking)
- (void)awakeFromNib;
@end

@interface NSBundle (NSNibLoading)
- (BOOL)loadNibNamed:(NSString*)nibName owner:(id)owner topLevelObjects:(NSArray**)topLevelObjects;
@end
