// Answers with a record that is no effect's.
#include "plugin/vst2/AEffect.h"

extern "C" __attribute__((visibility("default"))) AEffect* VSTPluginMain(audioMasterCallback) {
    static AEffect record{};
    return &record;
}
