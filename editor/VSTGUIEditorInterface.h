// What a user-interface frame asks of the editor that it belongs to.
#pragma once

#include "plugin/vst2/AEffect.h"

class CFrame; // the toolkit's; none is ever made here

// A rectangle of the toolkit, in pixels.
struct CRect {
    double left;
    double top;
    double right;
    double bottom;
};

class VSTGUIEditorInterface {
public:
    virtual void doIdleStuff() = 0;
    virtual VstInt32 getKnobMode() = 0;
    virtual void beginEdit(VstInt32 index) = 0;
    virtual void endEdit(VstInt32 index) = 0;
    // True when the frame may take `newSize`.
    virtual bool beforeSizeChange(const CRect& newSize, const CRect& oldSize) = 0;
    virtual CFrame* getFrame() { return frame; }
    virtual ~VSTGUIEditorInterface() = default;

protected:
    VSTGUIEditorInterface() = default;
    VSTGUIEditorInterface(const VSTGUIEditorInterface&) = delete;
    VSTGUIEditorInterface& operator=(const VSTGUIEditorInterface&) = delete;

    CFrame* frame = nullptr;
};
