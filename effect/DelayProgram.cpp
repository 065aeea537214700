#include "effect/DelayProgram.h"

#include "plugin/VstText.h"
#include "plugin/vst2/EffectOpcodes.h"

DelayProgram::DelayProgram()
    : delayTime(0.0799773261f), feedBack(0.215f), lowPass(0.374), highPass(0.655999),
      highPassType(false), lowPassType(true), leftRight(0.5), panDepth(0.0), mix(1.0) {
    vst_strncpy(name, "Init", kVstMaxProgNameLen);
}
