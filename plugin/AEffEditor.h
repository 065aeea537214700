// What an effect's editor answers to its host.
#pragma once

#include "plugin/vst2/AEffect.h"
#include "plugin/vst2/Records.h"

class AudioEffect;

// All operations are the host's user-interface thread's. The defaults are those of an editor that
// shows nothing.
class AEffEditor {
public:
    explicit AEffEditor(AudioEffect* owner = nullptr) : effect(owner), systemWindow(nullptr) {}
    virtual ~AEffEditor() = default;
    AEffEditor(const AEffEditor&) = delete;
    AEffEditor& operator=(const AEffEditor&) = delete;

    virtual AudioEffect* getEffect() { return effect; }
    // Writes the address of the editor's size in pixels to `*out`; the record stays the editor's.
    virtual bool getRect(ERect** out) {
        *out = nullptr;
        return false;
    }
    // `ptr` is the host's window or view, of a kind that depends on the system.
    virtual bool open(void* ptr) {
        systemWindow = ptr;
        return false;
    }
    virtual void close() { systemWindow = nullptr; }
    virtual bool isOpen() { return systemWindow != nullptr; }
    virtual void idle() {}
    virtual void draw(ERect* rect) {}
    virtual VstInt32 mouse(VstInt32 x, VstInt32 y) { return 0; }
    virtual VstInt32 key(VstInt32 keyCode) { return 0; }
    virtual void top() {}
    virtual void sleep() {}
    // True when the editor used the key, so that the host leaves it alone.
    virtual bool onKeyDown(VstKeyCode& keyCode) { return false; }
    virtual bool onKeyUp(VstKeyCode& keyCode) { return false; }
    virtual bool onWheel(float distance) { return false; }
    virtual bool setKnobMode(VstInt32 mode) { return false; }

protected:
    AudioEffect* effect; // not owned
    void* systemWindow;
};
