#include "host/check/OpcodeName.h"

#include <iterator>

namespace tvhost {

namespace {

// In the order of the numbers.
constexpr const char* kNames[] = {"effOpen",
                                  "effClose",
                                  "effSetProgram",
                                  "effGetProgram",
                                  "effSetProgramName",
                                  "effGetProgramName",
                                  "effGetParamLabel",
                                  "effGetParamDisplay",
                                  "effGetParamName",
                                  "effGetVu",
                                  "effSetSampleRate",
                                  "effSetBlockSize",
                                  "effMainsChanged",
                                  "effEditGetRect",
                                  "effEditOpen",
                                  "effEditClose",
                                  "effEditDraw",
                                  "effEditMouse",
                                  "effEditKey",
                                  "effEditIdle",
                                  "effEditTop",
                                  "effEditSleep",
                                  "effIdentify",
                                  "effGetChunk",
                                  "effSetChunk",
                                  "effProcessEvents",
                                  "effCanBeAutomated",
                                  "effString2Parameter",
                                  "effGetNumProgramCategories",
                                  "effGetProgramNameIndexed",
                                  "effCopyProgram",
                                  "effConnectInput",
                                  "effConnectOutput",
                                  "effGetInputProperties",
                                  "effGetOutputProperties",
                                  "effGetPlugCategory",
                                  "effGetCurrentPosition",
                                  "effGetDestinationBuffer",
                                  "effOfflineNotify",
                                  "effOfflinePrepare",
                                  "effOfflineRun",
                                  "effProcessVarIo",
                                  "effSetSpeakerArrangement",
                                  "effSetBlockSizeAndSampleRate",
                                  "effSetBypass",
                                  "effGetEffectName",
                                  "effGetErrorText",
                                  "effGetVendorString",
                                  "effGetProductString",
                                  "effGetVendorVersion",
                                  "effVendorSpecific",
                                  "effCanDo",
                                  "effGetTailSize",
                                  "effIdle",
                                  "effGetIcon",
                                  "effSetViewPosition",
                                  "effGetParameterProperties",
                                  "effKeysRequired",
                                  "effGetVstVersion",
                                  "effEditKeyDown",
                                  "effEditKeyUp",
                                  "effSetEditKnobMode",
                                  "effGetMidiProgramName",
                                  "effGetCurrentMidiProgram",
                                  "effGetMidiProgramCategory",
                                  "effHasMidiProgramsChanged",
                                  "effGetMidiKeyName",
                                  "effBeginSetProgram",
                                  "effEndSetProgram",
                                  "effGetSpeakerArrangement",
                                  "effShellGetNextPlugin",
                                  "effStartProcess",
                                  "effStopProcess",
                                  "effSetTotalSampleToProcess",
                                  "effSetPanLaw",
                                  "effBeginLoadBank",
                                  "effBeginLoadProgram",
                                  "effSetProcessPrecision",
                                  "effGetNumMidiInputChannels",
                                  "effGetNumMidiOutputChannels"};

} // namespace

std::string opcodeName(VstInt32 opcode) {
    if (opcode >= 0 && opcode < static_cast<VstInt32>(std::size(kNames))) {
        return kNames[opcode];
    }
    return "opcode " + std::to_string(opcode);
}

} // namespace tvhost
