// The road from the host's idle call to the editor's views.
#pragma once

// Delivers what waits for the editors of this process and paints what has changed. The host's
// user-interface thread, some 30 times a second. Does nothing where the host's own loop does it.
void deliverEditorEvents();
