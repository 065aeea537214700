#include "bench/others/Vst2Contender.h"

#include "plugin/vst2/EffectOpcodes.h"

#include <string>

namespace {

const LoadedPlugin& plugin() {
    static const auto* const loaded = new LoadedPlugin(TVDELAY_PLUGIN_PATH);
    return *loaded;
}

void ask(AEffect* effect, VstInt32 opcode, VstIntPtr value, float opt) {
    effect->dispatcher(effect, opcode, 0, value, nullptr, opt);
}

} // namespace

Vst2Contender::Vst2Contender() : effect_(plugin().entry()(plainHost)) {
    ask(effect_, effOpen, 0, 0.0f);
    ask(effect_, effSetSampleRate, 0, static_cast<float>(kContenderRate));
    ask(effect_, effSetBlockSize, kLongestBlock, 0.0f);
    ask(effect_, effMainsChanged, 1, 0.0f);
}

Vst2Contender::~Vst2Contender() {
    ask(effect_, effMainsChanged, 0, 0.0f);
    ask(effect_, effClose, 0, 0.0f);
}

void Vst2Contender::setProgram(int program) {
    ask(effect_, effSetProgram, program, 0.0f);
}

void Vst2Contender::setParameter(int index, float value) {
    effect_->setParameter(effect_, index, value);
}

void Vst2Contender::run(const float* const* inputs, float* const* outputs, int frames) {
    effect_->processReplacing(effect_, const_cast<float**>(inputs), const_cast<float**>(outputs),
                              frames);
}
