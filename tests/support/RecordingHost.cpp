#include "tests/support/RecordingHost.h"

#include "plugin/vst2/HostOpcodes.h"

RecordingHost* RecordingHost::current = nullptr;

RecordingHost::RecordingHost() : answersTo{{audioMasterVersion, 2400}} {
    current = this;
}

RecordingHost::~RecordingHost() {
    current = nullptr;
}

VstIntPtr RecordingHost::callback(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                                  void* ptr, float opt) {
    current->calls.push_back({effect, opcode, index, value, ptr, opt});
    const auto own = current->answersTo.find(opcode);
    return own != current->answersTo.end() ? own->second : current->answer;
}
