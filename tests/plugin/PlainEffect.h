// The least that an effect can be, with the base's fields laid open.
#pragma once

#include "plugin/AudioEffectX.h"

template <typename Base>
class Plain : public Base {
public:
    explicit Plain(audioMasterCallback host = nullptr, VstInt32 programs = 26,
                   VstInt32 parameters = 9)
        : Base(host, programs, parameters) {}

    void processReplacing(float**, float**, VstInt32) override {}

    using Base::audioMaster;
    using Base::blockSize;
    using Base::cEffect;
    using Base::curProgram;
    using Base::editor;
    using Base::numParams;
    using Base::numPrograms;
    using Base::sampleRate;
};

using PlainEffect = Plain<AudioEffect>;
using PlainEffectX = Plain<AudioEffectX>;
