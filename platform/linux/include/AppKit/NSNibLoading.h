// GNUstep's header, and what it lacks of it.
#include_next <AppKit/NSNibLoading.h>

#ifndef TVDELAY_NSNIBLOADING_H
#define TVDELAY_NSNIBLOADING_H

// The user-interface thread.
@interface NSBundle (NibNamedWithObjects)
// NO when the bundle has no nib of that name, or when it can't be loaded. With `objects` the array
// owns the nib's top objects; without, they are never released.
- (BOOL)loadNibNamed:(NSString*)name owner:(id)owner topLevelObjects:(NSArray**)objects;
@end

#endif
