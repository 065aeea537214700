// Deriving classes and other compilers' code rely on each operation's place in its class's table.
#include "editor/AEffGUIEditor.h"
#include "editor/tveditor13.h"
#include "effect/VstXSynth.h"
#include "plugin/AEffEditor.h"
#include "plugin/AudioEffectX.h"
#include "tests/plugin/VirtualSlot.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace {

using Slot = std::pair<const char*, std::ptrdiff_t>;
using Slots = std::vector<Slot>;

#define SLOT(type, operation) Slot(#operation, virtualSlot(&type::operation))

void expectInOrder(const Slots& slots, std::ptrdiff_t first) {
    for (const auto& [name, slot] : slots) {
        EXPECT_EQ(slot, first) << name;
        ++first;
    }
}

// A destructor takes two slots: one for objects alone, one that frees them as well.
constexpr std::ptrdiff_t kBehindDestructor = 2;

const Slots& audioEffectSlots() {
    static const Slots slots = {
        SLOT(AudioEffect, dispatcher),
        SLOT(AudioEffect, open),
        SLOT(AudioEffect, close),
        SLOT(AudioEffect, suspend),
        SLOT(AudioEffect, resume),
        SLOT(AudioEffect, setSampleRate),
        SLOT(AudioEffect, setBlockSize),
        SLOT(AudioEffect, processReplacing),
        SLOT(AudioEffect, processDoubleReplacing),
        SLOT(AudioEffect, setParameter),
        SLOT(AudioEffect, getParameter),
        SLOT(AudioEffect, setParameterAutomated),
        SLOT(AudioEffect, getProgram),
        SLOT(AudioEffect, setProgram),
        SLOT(AudioEffect, setProgramName),
        SLOT(AudioEffect, getProgramName),
        SLOT(AudioEffect, getParameterLabel),
        SLOT(AudioEffect, getParameterDisplay),
        SLOT(AudioEffect, getParameterName),
        SLOT(AudioEffect, getChunk),
        SLOT(AudioEffect, setChunk),
        SLOT(AudioEffect, setUniqueID),
        SLOT(AudioEffect, setNumInputs),
        SLOT(AudioEffect, setNumOutputs),
        SLOT(AudioEffect, canProcessReplacing),
        SLOT(AudioEffect, canDoubleReplacing),
        SLOT(AudioEffect, programsAreChunks),
        SLOT(AudioEffect, setInitialDelay),
        SLOT(AudioEffect, getEditor),
        SLOT(AudioEffect, getAeffect),
        SLOT(AudioEffect, getSampleRate),
        SLOT(AudioEffect, getBlockSize),
        SLOT(AudioEffect, getMasterVersion),
        SLOT(AudioEffect, getCurrentUniqueId),
        SLOT(AudioEffect, masterIdle),
        SLOT(AudioEffect, dB2string),
        SLOT(AudioEffect, Hz2string),
        SLOT(AudioEffect, ms2string),
        SLOT(AudioEffect, float2string),
        SLOT(AudioEffect, int2string),
        SLOT(AudioEffect, process),
        SLOT(AudioEffect, getVu),
        SLOT(AudioEffect, hasVu),
        SLOT(AudioEffect, hasClip),
        SLOT(AudioEffect, canMono),
        SLOT(AudioEffect, setRealtimeQualities),
        SLOT(AudioEffect, setOfflineQualities),
        SLOT(AudioEffect, isInputConnected),
        SLOT(AudioEffect, isOutputConnected),
    };
    return slots;
}

} // namespace

TEST(VirtualOrder, AudioEffectBeginsWithItsDestructorAndFollowsThePublishedOrder) {
    expectInOrder(audioEffectSlots(), kBehindDestructor);
}

TEST(VirtualOrder, AudioEffectXFollowsBehindAudioEffect) {
    const Slots slots = {
        SLOT(AudioEffectX, canParameterBeAutomated),
        SLOT(AudioEffectX, string2parameter),
        SLOT(AudioEffectX, getParameterProperties),
        SLOT(AudioEffectX, beginEdit),
        SLOT(AudioEffectX, endEdit),
        SLOT(AudioEffectX, getProgramNameIndexed),
        SLOT(AudioEffectX, beginSetProgram),
        SLOT(AudioEffectX, endSetProgram),
        SLOT(AudioEffectX, beginLoadBank),
        SLOT(AudioEffectX, beginLoadProgram),
        SLOT(AudioEffectX, ioChanged),
        SLOT(AudioEffectX, updateSampleRate),
        SLOT(AudioEffectX, updateBlockSize),
        SLOT(AudioEffectX, getInputLatency),
        SLOT(AudioEffectX, getOutputLatency),
        SLOT(AudioEffectX, getInputProperties),
        SLOT(AudioEffectX, getOutputProperties),
        SLOT(AudioEffectX, setSpeakerArrangement),
        SLOT(AudioEffectX, getSpeakerArrangement),
        SLOT(AudioEffectX, setBypass),
        SLOT(AudioEffectX, setPanLaw),
        SLOT(AudioEffectX, setProcessPrecision),
        SLOT(AudioEffectX, getNumMidiInputChannels),
        SLOT(AudioEffectX, getNumMidiOutputChannels),
        SLOT(AudioEffectX, getTimeInfo),
        SLOT(AudioEffectX, getCurrentProcessLevel),
        SLOT(AudioEffectX, getAutomationState),
        SLOT(AudioEffectX, processEvents),
        SLOT(AudioEffectX, startProcess),
        SLOT(AudioEffectX, stopProcess),
        SLOT(AudioEffectX, processVariableIo),
        SLOT(AudioEffectX, setTotalSampleToProcess),
        SLOT(AudioEffectX, getHostVendorString),
        SLOT(AudioEffectX, getHostProductString),
        SLOT(AudioEffectX, getHostVendorVersion),
        SLOT(AudioEffectX, hostVendorSpecific),
        SLOT(AudioEffectX, canHostDo),
        SLOT(AudioEffectX, getHostLanguage),
        SLOT(AudioEffectX, isSynth),
        SLOT(AudioEffectX, noTail),
        SLOT(AudioEffectX, getGetTailSize),
        SLOT(AudioEffectX, getDirectory),
        SLOT(AudioEffectX, getEffectName),
        SLOT(AudioEffectX, getVendorString),
        SLOT(AudioEffectX, getProductString),
        SLOT(AudioEffectX, getVendorVersion),
        SLOT(AudioEffectX, vendorSpecific),
        SLOT(AudioEffectX, canDo),
        SLOT(AudioEffectX, getVstVersion),
        SLOT(AudioEffectX, getPlugCategory),
        SLOT(AudioEffectX, getMidiProgramName),
        SLOT(AudioEffectX, getCurrentMidiProgram),
        SLOT(AudioEffectX, getMidiProgramCategory),
        SLOT(AudioEffectX, hasMidiProgramsChanged),
        SLOT(AudioEffectX, getMidiKeyName),
        SLOT(AudioEffectX, updateDisplay),
        SLOT(AudioEffectX, sizeWindow),
        SLOT(AudioEffectX, openFileSelector),
        SLOT(AudioEffectX, closeFileSelector),
        SLOT(AudioEffectX, getNextShellPlugin),
        SLOT(AudioEffectX, allocateArrangement),
        SLOT(AudioEffectX, deallocateArrangement),
        SLOT(AudioEffectX, copySpeaker),
        SLOT(AudioEffectX, matchArrangement),
        SLOT(AudioEffectX, offlineRead),
        SLOT(AudioEffectX, offlineWrite),
        SLOT(AudioEffectX, offlineStart),
        SLOT(AudioEffectX, offlineGetCurrentPass),
        SLOT(AudioEffectX, offlineGetCurrentMetaPass),
        SLOT(AudioEffectX, offlineNotify),
        SLOT(AudioEffectX, offlinePrepare),
        SLOT(AudioEffectX, offlineRun),
        SLOT(AudioEffectX, offlineGetNumPasses),
        SLOT(AudioEffectX, offlineGetNumMetaPasses),
        SLOT(AudioEffectX, wantEvents),
        SLOT(AudioEffectX, tempoAt),
        SLOT(AudioEffectX, getNumAutomatableParameters),
        SLOT(AudioEffectX, getParameterQuantization),
        SLOT(AudioEffectX, getNumCategories),
        SLOT(AudioEffectX, copyProgram),
        SLOT(AudioEffectX, needIdle),
        SLOT(AudioEffectX, getPreviousPlug),
        SLOT(AudioEffectX, getNextPlug),
        SLOT(AudioEffectX, inputConnected),
        SLOT(AudioEffectX, outputConnected),
        SLOT(AudioEffectX, willProcessReplacing),
        SLOT(AudioEffectX, wantAsyncOperation),
        SLOT(AudioEffectX, hasExternalBuffer),
        SLOT(AudioEffectX, reportCurrentPosition),
        SLOT(AudioEffectX, reportDestinationBuffer),
        SLOT(AudioEffectX, setOutputSamplerate),
        SLOT(AudioEffectX, getInputSpeakerArrangement),
        SLOT(AudioEffectX, getOutputSpeakerArrangement),
        SLOT(AudioEffectX, openWindow),
        SLOT(AudioEffectX, closeWindow),
        SLOT(AudioEffectX, setBlockSizeAndSampleRate),
        SLOT(AudioEffectX, getErrorText),
        SLOT(AudioEffectX, getIcon),
        SLOT(AudioEffectX, setViewPosition),
        SLOT(AudioEffectX, fxIdle),
        SLOT(AudioEffectX, keysRequired),
        SLOT(AudioEffectX, getChunkFile),
    };
    expectInOrder(slots,
                  kBehindDestructor + static_cast<std::ptrdiff_t>(audioEffectSlots().size()));
}

TEST(VirtualOrder, SendingEventsToTheHostIsNoVirtualOperation) {
    EXPECT_EQ(virtualSlot(&AudioEffectX::sendVstEventsToHost), -1);
    EXPECT_EQ(virtualSlot(&AudioEffect::setEditor), -1);
    EXPECT_EQ(virtualSlot(&VstXSynth::setDelay), -1);
}

namespace {

const Slots& editorSlots() {
    static const Slots slots = {
        SLOT(AEffEditor, getEffect), SLOT(AEffEditor, getRect), SLOT(AEffEditor, open),
        SLOT(AEffEditor, close),     SLOT(AEffEditor, isOpen),  SLOT(AEffEditor, idle),
        SLOT(AEffEditor, draw),      SLOT(AEffEditor, mouse),   SLOT(AEffEditor, key),
        SLOT(AEffEditor, top),       SLOT(AEffEditor, sleep),   SLOT(AEffEditor, onKeyDown),
        SLOT(AEffEditor, onKeyUp),   SLOT(AEffEditor, onWheel), SLOT(AEffEditor, setKnobMode),
    };
    return slots;
}

} // namespace

TEST(VirtualOrder, EditorBaseBeginsWithItsDestructor) {
    expectInOrder(editorSlots(), kBehindDestructor);
}

TEST(VirtualOrder, EditorFrameFollowsBehindTheEditorBase) {
    const Slots slots = {
        SLOT(AEffGUIEditor, setParameter),     SLOT(AEffGUIEditor, editorReservedHook),
        SLOT(AEffGUIEditor, doIdleStuff),      SLOT(AEffGUIEditor, getKnobMode),
        SLOT(AEffGUIEditor, beforeSizeChange), SLOT(AEffGUIEditor, beginEdit),
        SLOT(AEffGUIEditor, endEdit),
    };
    expectInOrder(slots, kBehindDestructor + static_cast<std::ptrdiff_t>(editorSlots().size()));
}

TEST(VirtualOrder, InterfaceToTheFrameEndsWithItsDestructor) {
    const Slots slots = {
        SLOT(VSTGUIEditorInterface, doIdleStuff),      SLOT(VSTGUIEditorInterface, getKnobMode),
        SLOT(VSTGUIEditorInterface, beginEdit),        SLOT(VSTGUIEditorInterface, endEdit),
        SLOT(VSTGUIEditorInterface, beforeSizeChange), SLOT(VSTGUIEditorInterface, getFrame),
    };
    expectInOrder(slots, 0);
}

// Overrides add no slot of their own, so the effect's table is as long as its base's.
TEST(VirtualOrder, OverridesOfTheEffectKeepTheirBasesSlots) {
    EXPECT_EQ(virtualSlot(&VstXSynth::resume), virtualSlot(&AudioEffect::resume));
    EXPECT_EQ(virtualSlot(&VstXSynth::processReplacing),
              virtualSlot(&AudioEffect::processReplacing));
    EXPECT_EQ(virtualSlot(&VstXSynth::getMidiKeyName), virtualSlot(&AudioEffectX::getMidiKeyName));
    EXPECT_EQ(virtualSlot(&tveditor13::open), virtualSlot(&AEffEditor::open));
    EXPECT_EQ(virtualSlot(&tveditor13::setParameter), virtualSlot(&AEffGUIEditor::setParameter));
}
