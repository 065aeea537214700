// An editor frame with its fields laid open.
#pragma once

#include "editor/AEffGUIEditor.h"

class OpenEditor : public AEffGUIEditor {
public:
    using AEffGUIEditor::AEffGUIEditor;

    using AEffEditor::effect;
    using AEffEditor::systemWindow;
    using AEffGUIEditor::inIdleStuff;
    using AEffGUIEditor::lastTicks;
    using AEffGUIEditor::rect;
    using VSTGUIEditorInterface::frame;
};
