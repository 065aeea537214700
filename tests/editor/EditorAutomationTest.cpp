// What an open editor makes of automation from an audio thread.
#include "tests/support/CallTraps.h"
#include "tests/support/LoadedPlugin.h"
#include "tests/support/screen/HostedEditor.h"
#include "tests/support/screen/SlapBack.h"
#include "tests/support/screen/XServer.h"

#include "plugin/vst2/EffectOpcodes.h"

#include <gtest/gtest.h>

#include <thread>

TEST(EditorAutomation, ParametersSetWithAnOpenEditorNeitherAllocateNorLock) {
    sharedXServer();
    const LoadedPlugin plugin(TVDELAY_PLUGIN_PATH);
    AEffect* const effect = plugin.entry()(plainHost);
    {
        HostedEditor editor(effect);
        ASSERT_TRUE(editor.shows(kSlapBack));
        TrappedCalls calls;
        std::thread([&] {
            CallTraps traps;
            for (int parameter = 0; parameter < 9; ++parameter) {
                effect->setParameter(effect, parameter, 0.505f);
            }
            calls = traps.stop();
        }).join();
        EXPECT_EQ(calls.allocations.size(), 0u);
        EXPECT_EQ(calls.frees, 0u);
        EXPECT_EQ(calls.locks, 0u);
        EXPECT_TRUE(editor.shows({63, 63, 63, 63, 0, 0, 63, 63, 63}));
    }
    effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
}
