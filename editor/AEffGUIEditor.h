// The layer between the host's editor calls and the editor itself: idle pacing, the knob mode and
// the plug-in's own bundle.
#pragma once

#include "editor/VSTGUIEditorInterface.h"
#include "plugin/AEffEditor.h"

#include <CoreFoundation/CoreFoundation.h>

#include <cstdint>

// For the host's user-interface thread. `effect` must not be null, and is an AudioEffectX.
class AEffGUIEditor : public AEffEditor, public VSTGUIEditorInterface {
public:
    // Makes itself the effect's editor and looks the bundle up.
    explicit AEffGUIEditor(AudioEffect* owner);
    ~AEffGUIEditor() override; // releases the bundle that is known then

    bool getRect(ERect** out) override;
    bool open(void* ptr) override;
    void close() override;
    // Where the host's own loop doesn't run the views (Linux), this delivers their events and
    // paints them. Does nothing when called from within doIdleStuff's masterIdle.
    void idle() override;
    // Always false: the host keeps every key.
    bool onKeyDown(VstKeyCode& keyCode) override { return false; }
    bool onKeyUp(VstKeyCode& keyCode) override { return false; }
    bool setKnobMode(VstInt32 mode) override; // for all editors of the process; always true

    virtual void setParameter(VstInt32 index, float value) {}
    virtual void editorReservedHook() {}
    // One pass of idle work, at most one in 100 ms: earlier calls wait 4 ms.
    void doIdleStuff() override;
    VstInt32 getKnobMode() override { return knobMode; }
    // Asks a host that can do "sizeWindow" for the new size, in pixels, fractions cut.
    bool beforeSizeChange(const CRect& newSize, const CRect& oldSize) override;
    void beginEdit(VstInt32 index) override;
    void endEdit(VstInt32 index) override;

    // Milliseconds in steps of a sixtieth of a second. Wraps at 32 bits before the division.
    static std::uint32_t getTicks();
    // On macOS the event loop runs meanwhile. On Linux the thread sleeps: a host's loop may not be
    // run from within its own calls, and the editors' events come with idle().
    static void wait(std::uint32_t ms);

    // The bundle that this code was loaded from, owned by the caller; null when there is none.
    static CFBundleRef createEffectBundle();

    // Shared by all editors of the process: each constructor overwrites it, each destructor
    // releases what it finds.
    static CFBundleRef effectBundle;
    static VstInt32 knobMode;

protected:
    ERect rect; // what the host is told, in pixels
    std::uint32_t lastTicks;
    bool inIdleStuff;
};
