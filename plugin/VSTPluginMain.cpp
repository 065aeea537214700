#include "plugin/VSTPluginMain.h"

#include "plugin/AudioEffect.h"

AEffect* VSTPluginMain(audioMasterCallback audioMaster) {
    if (audioMaster(nullptr, audioMasterVersion, 0, 0, nullptr, 0.0f) == 0) {
        return nullptr;
    }
    AudioEffect* const effect = createEffectInstance(audioMaster);
    if (effect == nullptr) {
        return nullptr;
    }
    return effect->getAeffect();
}
