// Makes no effect.
#include "plugin/vst2/AEffect.h"

extern "C" __attribute__((visibility("default"))) AEffect* VSTPluginMain(audioMasterCallback) {
    return nullptr;
}
