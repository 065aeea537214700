#include "editor/hosting/EditorHosting.h"

// The host's own loop delivers events to views in its windows: there is nothing to add.

bool prepareEditorViews() {
    return true;
}

void finishEditorViews() {}

void* hostObjectFor(void* passed) {
    return passed;
}

void editorShown(const tveditor13* editor, NSView* rootView) {}

void editorClosed(const tveditor13* editor) {}

void deliverEditorEvents() {}
