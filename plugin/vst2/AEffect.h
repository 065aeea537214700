// The record through which a VST 2 host and a plug-in meet, and the types it is made of.
// Layout is that of the published interface on 64-bit systems; hosts rely on every offset.
#pragma once

#include <cstddef>
#include <cstdint>

using VstInt16 = std::int16_t;
using VstInt32 = std::int32_t;
using VstIntPtr = std::intptr_t;

struct AEffect;

// The host's entry for calls from the plug-in. `effect` is null only for the version question that
// comes before an instance exists.
using audioMasterCallback = VstIntPtr (*)(AEffect* effect, VstInt32 opcode, VstInt32 index,
                                          VstIntPtr value, void* ptr, float opt);

using AEffectDispatcherProc = VstIntPtr (*)(AEffect* effect, VstInt32 opcode, VstInt32 index,
                                            VstIntPtr value, void* ptr, float opt);
using AEffectProcessProc = void (*)(AEffect* effect, float** inputs, float** outputs,
                                    VstInt32 sampleFrames);
using AEffectProcessDoubleProc = void (*)(AEffect* effect, double** inputs, double** outputs,
                                          VstInt32 sampleFrames);
using AEffectSetParameterProc = void (*)(AEffect* effect, VstInt32 index, float value);
using AEffectGetParameterProc = float (*)(AEffect* effect, VstInt32 index);

// Packs four characters with the first one in the highest byte, as identifiers are on every system.
constexpr VstInt32 packFourCharacters(char a, char b, char c, char d) {
    return static_cast<VstInt32>(static_cast<std::uint32_t>(static_cast<unsigned char>(a)) << 24 |
                                 static_cast<std::uint32_t>(static_cast<unsigned char>(b)) << 16 |
                                 static_cast<std::uint32_t>(static_cast<unsigned char>(c)) << 8 |
                                 static_cast<std::uint32_t>(static_cast<unsigned char>(d)));
}

constexpr VstInt32 kEffectMagic = packFourCharacters('V', 's', 't', 'P');

enum VstAEffectFlags : VstInt32 {
    effFlagsHasEditor = 1 << 0,
    effFlagsHasClip = 1 << 1,
    effFlagsHasVu = 1 << 2,
    effFlagsCanMono = 1 << 3,
    effFlagsCanReplacing = 1 << 4,
    effFlagsProgramChunks = 1 << 5,
    effFlagsIsSynth = 1 << 8,
    effFlagsNoSoundInStop = 1 << 9,
    effFlagsExtIsAsync = 1 << 10,
    effFlagsExtHasBuffer = 1 << 11,
    effFlagsCanDoubleReplacing = 1 << 12,
};

struct AEffect {
    VstInt32 magic; // kEffectMagic
    AEffectDispatcherProc dispatcher;
    AEffectProcessProc process; // accumulating, first interface generation
    AEffectSetParameterProc setParameter;
    AEffectGetParameterProc getParameter;
    VstInt32 numPrograms;
    VstInt32 numParams;
    VstInt32 numInputs;
    VstInt32 numOutputs;
    VstInt32 flags; // VstAEffectFlags
    VstIntPtr resvd1;
    VstIntPtr resvd2;
    VstInt32 initialDelay; // samples
    VstInt32 realQualities;
    VstInt32 offQualities;
    float ioRatio;
    void* object; // the plug-in's own
    void* user;   // the host's own
    VstInt32 uniqueID;
    VstInt32 version;
    AEffectProcessProc processReplacing;
    AEffectProcessDoubleProc processDoubleReplacing;
    char future[56];
};

struct ERect {
    VstInt16 top;
    VstInt16 left;
    VstInt16 bottom;
    VstInt16 right;
};

static_assert(sizeof(AEffect) == 192);
static_assert(offsetof(AEffect, magic) == 0);
static_assert(offsetof(AEffect, dispatcher) == 8);
static_assert(offsetof(AEffect, process) == 16);
static_assert(offsetof(AEffect, setParameter) == 24);
static_assert(offsetof(AEffect, getParameter) == 32);
static_assert(offsetof(AEffect, numPrograms) == 40);
static_assert(offsetof(AEffect, numParams) == 44);
static_assert(offsetof(AEffect, numInputs) == 48);
static_assert(offsetof(AEffect, numOutputs) == 52);
static_assert(offsetof(AEffect, flags) == 56);
static_assert(offsetof(AEffect, resvd1) == 64);
static_assert(offsetof(AEffect, resvd2) == 72);
static_assert(offsetof(AEffect, initialDelay) == 80);
static_assert(offsetof(AEffect, realQualities) == 84);
static_assert(offsetof(AEffect, offQualities) == 88);
static_assert(offsetof(AEffect, ioRatio) == 92);
static_assert(offsetof(AEffect, object) == 96);
static_assert(offsetof(AEffect, user) == 104);
static_assert(offsetof(AEffect, uniqueID) == 112);
static_assert(offsetof(AEffect, version) == 116);
static_assert(offsetof(AEffect, processReplacing) == 120);
static_assert(offsetof(AEffect, processDoubleReplacing) == 128);
static_assert(offsetof(AEffect, future) == 136);
static_assert(sizeof(ERect) == 8);
