#pragma once

// Makes `initWithWindowRef:` of NSWindow answer nil for anything that can't be the handle of a
// window of the X server, where it would ask the server for it. Repeated calls change nothing.
void refuseForeignWindowReferences();
