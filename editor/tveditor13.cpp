#include "editor/tveditor13.h"

bool tveditor13::open(void* ptr) {
    embedView = ptr;
    editorOpen = true;
    return true;
}

void tveditor13::close() {
    editorOpen = false;
}

void tveditor13::setParameter(VstInt32 index, float value) {}
