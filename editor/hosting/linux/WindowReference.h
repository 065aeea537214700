#pragma once

// Makes `initWithWindowRef:` of NSWindow answer nil for `view`, where it would look for a handle of
// the X server behind the pointer. Holds until it is called again, for that pointer alone.
void refuseAsWindowReference(void* view);
