#import "editor/tarnsCustomWindow10.h"

#include "editor/tveditor13.h"

@implementation tarnsCustomWindow10

@synthesize editor = _editor;
@synthesize winPointerRef = _winPointerRef;

- (void)close {
    _editor->editorOpen = false;
    [super close];
}

@end
