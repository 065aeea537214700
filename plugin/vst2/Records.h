// The records that dispatcher and host calls point to. Layout is that of the published interface on
// 64-bit systems.
#pragma once

#include "plugin/vst2/AEffect.h"
#include "plugin/vst2/EffectOpcodes.h"

struct VstEvent {
    VstInt32 type;
    VstInt32 byteSize; // of this event, without `type` and `byteSize`
    VstInt32 deltaFrames;
    VstInt32 flags;
    char data[16];
};

struct VstEvents {
    VstInt32 numEvents;
    VstIntPtr reserved;
    VstEvent* events[2]; // as many as numEvents says
};

struct VstTimeInfo {
    double samplePos;
    double sampleRate;
    double nanoSeconds;
    double ppqPos;
    double tempo;
    double barStartPos;
    double cycleStartPos;
    double cycleEndPos;
    VstInt32 timeSigNumerator;
    VstInt32 timeSigDenominator;
    VstInt32 smpteOffset;
    VstInt32 smpteFrameRate;
    VstInt32 samplesToNextClock;
    VstInt32 flags;
};

struct VstVariableIo {
    float** inputs;
    float** outputs;
    VstInt32 numSamplesInput;
    VstInt32 numSamplesOutput;
    VstInt32* numSamplesInputProcessed;
    VstInt32* numSamplesOutputProcessed;
};

struct VstParameterProperties {
    float stepFloat;
    float smallStepFloat;
    float largeStepFloat;
    char label[kVstMaxLabelLen];
    VstInt32 flags;
    VstInt32 minInteger;
    VstInt32 maxInteger;
    VstInt32 stepInteger;
    VstInt32 largeStepInteger;
    char shortLabel[kVstMaxShortLabelLen];
    VstInt16 displayIndex;
    VstInt16 category;
    VstInt16 numParametersInCategory;
    VstInt16 reserved;
    char categoryLabel[kVstMaxCategLabelLen];
    char future[16];
};

enum VstPinPropertiesFlags : VstInt32 {
    kVstPinIsActive = 1 << 0,
    kVstPinIsStereo = 1 << 1,
    kVstPinUseSpeaker = 1 << 2,
};

struct VstPinProperties {
    char label[kVstMaxLabelLen];
    VstInt32 flags; // VstPinPropertiesFlags
    VstInt32 arrangementType;
    char shortLabel[kVstMaxShortLabelLen];
    char future[48];
};

struct MidiProgramName {
    VstInt32 thisProgramIndex;
    char name[kVstMaxNameLen];
    char midiProgram;
    char midiBankMsb;
    char midiBankLsb;
    char reserved;
    VstInt32 parentCategoryIndex;
    VstInt32 flags;
};

struct MidiProgramCategory {
    VstInt32 thisCategoryIndex;
    char name[kVstMaxNameLen];
    VstInt32 parentCategoryIndex;
    VstInt32 flags;
};

struct MidiKeyName {
    VstInt32 thisProgramIndex;
    VstInt32 thisKeyNumber;
    char keyName[kVstMaxNameLen];
    VstInt32 reserved;
    VstInt32 flags;
};

struct VstSpeakerProperties {
    float azimuth;   // radians
    float elevation; // radians
    float radius;    // metres
    float reserved;
    char name[kVstMaxNameLen];
    VstInt32 type;
    char future[28];
};

struct VstSpeakerArrangement {
    VstInt32 type;
    VstInt32 numChannels;
    VstSpeakerProperties speakers[8]; // as many as numChannels says
};

struct VstOfflineTask {
    char processName[96];
    double readPosition;
    double writePosition;
    VstInt32 readCount;
    VstInt32 writeCount;
    VstInt32 sizeInputBuffer;
    VstInt32 sizeOutputBuffer;
    void* inputBuffer;
    void* outputBuffer;
    double positionToProcessFrom;
    double numFramesToProcess;
    double maxFramesToWrite;
    void* extraBuffer;
    VstInt32 value;
    VstInt32 index;
    double numFramesInSourceFile;
    double sourceSampleRate;
    double destinationSampleRate;
    VstInt32 numSourceChannels;
    VstInt32 numDestinationChannels;
    VstInt32 sourceFormat;
    VstInt32 destinationFormat;
    char outputText[512];
    double progress;
    VstInt32 progressMode;
    char progressText[100];
    VstInt32 flags;
    VstInt32 returnValue;
    void* hostOwned;
    void* plugOwned;
    char future[1024];
};

struct VstAudioFile {
    VstInt32 flags;
    void* hostOwned;
    void* plugOwned;
    char name[kVstMaxFileNameLen];
    VstInt32 uniqueId;
    double sampleRate;
    VstInt32 numChannels;
    double numFrames;
    VstInt32 format;
    double editCursorPosition;
    double selectionStart;
    double selectionSize;
    VstInt32 selectedChannelsMask;
    VstInt32 numMarkers;
    VstInt32 timeRulerUnit;
    double timeRulerOffset;
    double tempo;
    VstInt32 timeSigNumerator;
    VstInt32 timeSigDenominator;
    VstInt32 ticksPerBlackNote;
    VstInt32 smpteFrameRate;
    char future[64];
};

struct VstWindow {
    char title[128];
    VstInt16 xPos;
    VstInt16 yPos;
    VstInt16 width;
    VstInt16 height;
    VstInt32 style;
    void* parent;
    void* userHandle;
    void* winHandle;
    char future[104];
};

struct VstKeyCode {
    VstInt32 character;
    unsigned char virt;
    unsigned char modifier;
};

struct VstFileType {
    char name[128];
    char macType[8];
    char dosType[8];
    char unixType[8];
    char mimeType1[128];
    char mimeType2[128];
};

struct VstFileSelect {
    VstInt32 command;
    VstInt32 type;
    VstInt32 macCreator;
    VstInt32 nbFileTypes;
    VstFileType* fileTypes;
    char title[1024];
    char* initialPath;
    char* returnPath;
    VstInt32 sizeReturnPath;
    char** returnMultiplePaths;
    VstInt32 nbReturnPath;
    VstIntPtr reserved;
    char future[116];
};

struct VstPatchChunkInfo {
    VstInt32 version;
    VstInt32 pluginUniqueID;
    VstInt32 pluginVersion;
    VstInt32 numElements;
    char future[48];
};

static_assert(sizeof(VstEvent) == 32);
static_assert(sizeof(VstEvents) == 32 && offsetof(VstEvents, events) == 16);
static_assert(sizeof(VstTimeInfo) == 88 && offsetof(VstTimeInfo, timeSigNumerator) == 64);
static_assert(sizeof(VstVariableIo) == 40 &&
              offsetof(VstVariableIo, numSamplesInputProcessed) == 24);
static_assert(sizeof(VstParameterProperties) == 152 &&
              offsetof(VstParameterProperties, flags) == 76 &&
              offsetof(VstParameterProperties, shortLabel) == 96 &&
              offsetof(VstParameterProperties, displayIndex) == 104 &&
              offsetof(VstParameterProperties, categoryLabel) == 112);
static_assert(sizeof(VstPinProperties) == 128 && offsetof(VstPinProperties, flags) == 64 &&
              offsetof(VstPinProperties, shortLabel) == 72);
static_assert(sizeof(MidiProgramName) == 80 && offsetof(MidiProgramName, midiProgram) == 68 &&
              offsetof(MidiProgramName, flags) == 76);
static_assert(sizeof(MidiProgramCategory) == 76 && offsetof(MidiProgramCategory, flags) == 72);
static_assert(sizeof(MidiKeyName) == 80 && offsetof(MidiKeyName, keyName) == 8 &&
              offsetof(MidiKeyName, reserved) == 72 && offsetof(MidiKeyName, flags) == 76);
static_assert(sizeof(VstSpeakerProperties) == 112 && offsetof(VstSpeakerProperties, name) == 16 &&
              offsetof(VstSpeakerProperties, type) == 80 &&
              offsetof(VstSpeakerProperties, future) == 84);
static_assert(sizeof(VstSpeakerArrangement) == 904 &&
              offsetof(VstSpeakerArrangement, numChannels) == 4 &&
              offsetof(VstSpeakerArrangement, speakers) == 8);
static_assert(sizeof(VstOfflineTask) == 1896 && offsetof(VstOfflineTask, inputBuffer) == 128 &&
              offsetof(VstOfflineTask, extraBuffer) == 168 &&
              offsetof(VstOfflineTask, outputText) == 224 &&
              offsetof(VstOfflineTask, progressText) == 748 &&
              offsetof(VstOfflineTask, hostOwned) == 856);
static_assert(sizeof(VstAudioFile) == 296 && offsetof(VstAudioFile, name) == 24 &&
              offsetof(VstAudioFile, sampleRate) == 128 &&
              offsetof(VstAudioFile, editCursorPosition) == 160 &&
              offsetof(VstAudioFile, timeRulerOffset) == 200 &&
              offsetof(VstAudioFile, future) == 232);
static_assert(sizeof(VstWindow) == 272 && offsetof(VstWindow, style) == 136 &&
              offsetof(VstWindow, parent) == 144 && offsetof(VstWindow, future) == 168);
static_assert(sizeof(VstKeyCode) == 8 && offsetof(VstKeyCode, virt) == 4 &&
              offsetof(VstKeyCode, modifier) == 5);
static_assert(sizeof(VstFileType) == 408);
static_assert(sizeof(VstFileSelect) == 1216 && offsetof(VstFileSelect, fileTypes) == 16 &&
              offsetof(VstFileSelect, initialPath) == 1048 &&
              offsetof(VstFileSelect, returnMultiplePaths) == 1072 &&
              offsetof(VstFileSelect, reserved) == 1088);
static_assert(sizeof(VstPatchChunkInfo) == 64);
