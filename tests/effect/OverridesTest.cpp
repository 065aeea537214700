// Which operations the effect has of its own, read off its table of virtual operations.
#include "effect/VstXSynth.h"

#include "tests/plugin/PlainEffect.h"
#include "tests/plugin/VirtualSlot.h"
#include "tests/support/LoadedPlugin.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>

namespace {

const void* const* tableOf(const AudioEffect& effect) {
    const void* const* table;
    std::memcpy(&table, static_cast<const void*>(&effect), sizeof(table));
    return table;
}

} // namespace

TEST(Overrides, EffectOverridesTheseOperationsAndNoOther) {
    const VstXSynth effect(plainHost);
    const PlainEffectX base;
    const std::set<std::ptrdiff_t> expected = {
        0, // destructor, for objects alone
        1, // destructor that frees
        virtualSlot(&VstXSynth::resume),
        virtualSlot(&VstXSynth::processReplacing), // pure in the base
        virtualSlot(&VstXSynth::setParameter),
        virtualSlot(&VstXSynth::getParameter),
        virtualSlot(&VstXSynth::setProgram),
        virtualSlot(&VstXSynth::setProgramName),
        virtualSlot(&VstXSynth::getProgramName),
        virtualSlot(&VstXSynth::getParameterLabel),
        virtualSlot(&VstXSynth::getParameterDisplay),
        virtualSlot(&VstXSynth::getParameterName),
        virtualSlot(&VstXSynth::getProgramNameIndexed),
        virtualSlot(&VstXSynth::getOutputProperties),
        virtualSlot(&VstXSynth::getNumMidiInputChannels),
        virtualSlot(&VstXSynth::getNumMidiOutputChannels),
        virtualSlot(&VstXSynth::getEffectName),
        virtualSlot(&VstXSynth::getVendorString),
        virtualSlot(&VstXSynth::getProductString),
        virtualSlot(&VstXSynth::getVendorVersion),
        virtualSlot(&VstXSynth::canDo),
        virtualSlot(&VstXSynth::getPlugCategory),
        virtualSlot(&VstXSynth::hasMidiProgramsChanged),
        virtualSlot(&VstXSynth::getMidiKeyName),
    };
    ASSERT_EQ(expected.count(-1), 0u) << "an operation is not virtual";

    const std::ptrdiff_t slots = virtualSlot(&AudioEffectX::getChunkFile) + 1; // the last one
    const void* const* const own = tableOf(effect);
    const void* const* const inherited = tableOf(base);
    for (std::ptrdiff_t slot = 0; slot < slots; ++slot) {
        EXPECT_EQ(own[slot] != inherited[slot], expected.count(slot) == 1) << "slot " << slot;
    }
}
