// How a host gets an instance.
#pragma once

#include "plugin/vst2/AEffect.h"

class AudioEffect;

// The one exported entry. Null when the host answers 0 to the question for its version. The
// instance is the host's, which ends it by effClose. `audioMaster` must not be null. A failed
// allocation leaves as an exception.
extern "C" __attribute__((visibility("default"))) AEffect*
VSTPluginMain(audioMasterCallback audioMaster);

// The effect of this plug-in, made with plain new.
AudioEffect* createEffectInstance(audioMasterCallback audioMaster);
