// An instance of the macOS bundle and one of the Linux bundle, driven alike by their records.
#pragma once

#include "plugin/vst2/AEffect.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/ScriptGenerator.h"

#include <string>
#include <vector>

class RecordPair {
public:
    using Entry = AEffect* (*)(audioMasterCallback);

    RecordPair(Entry macEntry, Entry linuxEntry);
    ~RecordPair();
    RecordPair(const RecordPair&) = delete;
    RecordPair& operator=(const RecordPair&) = delete;

    // Each answers with what differs between the two, empty when nothing does.

    std::string recordDifference() const;
    std::string run(const ScriptStep& step); // what it writes, and all that can be read afterwards
    // One opcode, with `ptr` leading to memory that is filled with `text` and zeros: the answer,
    // the memory and what the host was asked meanwhile.
    std::string dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, const std::string& text,
                         float opt);
    std::string setParameter(VstInt32 index, float value);
    std::string stateDifference(); // parameters and texts

    RecordingHost& host() { return host_; }

private:
    std::string process(const ScriptStep& step);
    std::string callDifference();

    RecordingHost host_;
    AEffect* mac_;
    AEffect* linux_;
};
