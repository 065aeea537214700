#include "plugin/CanDos.h"

const char* const HostCanDos[14] = {
    "sendVstEvents",
    "sendVstMidiEvent",
    "sendVstTimeInfo",
    "receiveVstEvents",
    "receiveVstMidiEvent",
    "reportConnectionChanges",
    "acceptIOChanges",
    "sizeWindow",
    "offline",
    "openFileSelector",
    "closeFileSelector",
    "startStopProcess",
    "shellCategory",
    "sendVstMidiEventFlagIsRealtime",
};

const char* const PlugCanDos[8] = {
    "sendVstEvents",      "sendVstMidiEvent", "receiveVstEvents", "receiveVstMidiEvent",
    "receiveVstTimeInfo", "offline",          "midiProgramNames", "bypass",
};
