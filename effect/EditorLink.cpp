// What VstXSynth has to do with its editor. No other file here knows that class.
#include "effect/VstXSynth.h"

#include "editor/tveditor13.h"

void VstXSynth::makeEditor() {
    uiEditor = new tveditor13(this);
    uiEditor->setEffectRef(this);
    setEditor(uiEditor);
    editor = uiEditor;
}

// Told of every index, unknown ones too. The base's field is asked, since that is the one the base
// shows, closes and deletes; whoever has stored an editor there is a tveditor13 or derived from it.
void VstXSynth::notifyEditor(VstInt32 index, float value) {
    auto* const shown = static_cast<tveditor13*>(editor);
    if (shown != nullptr && shown->editorOpen && !editorUpdateHold) {
        shown->setParameter(index, value);
    }
}
