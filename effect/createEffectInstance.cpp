#include "effect/VstXSynth.h"
#include "plugin/VSTPluginMain.h"

AudioEffect* createEffectInstance(audioMasterCallback audioMaster) {
    return new VstXSynth(audioMaster);
}
