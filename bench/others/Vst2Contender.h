// TvDelay as hosts load it.
#pragma once

#include "bench/others/Contender.h"
#include "tests/support/LoadedPlugin.h"

#include "plugin/vst2/AEffect.h"

class Vst2Contender : public Contender {
public:
    // Makes an instance of the built bundle. Its instances stay in memory in part, as in a host.
    Vst2Contender();
    ~Vst2Contender() override;

    void setProgram(int program);
    void setParameter(int index, float value);

    void run(const float* const* inputs, float* const* outputs, int frames) override;

private:
    AEffect* effect_;
};
