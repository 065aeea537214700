// What the scanners of real hosts find in the bundle, without a display.
#include "tests/realhosts/HostHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using ::testing::HasSubstr;

TEST(ArdourScanner, ListsTheEffectWithItsMakerAndChannels) {
    const HostHome home;
    const ProcessResult scan =
        home.run("LD_LIBRARY_PATH=/usr/lib/ardour7 timeout 60 "
                 "/usr/lib/ardour7/ardour-vst-scanner -f -v '" TVDELAY_SO "'");
    ASSERT_EQ(scan.status, 0) << scan.out;
    EXPECT_THAT(scan.out, HasSubstr("name=\"TvDelay\""));
    EXPECT_THAT(scan.out, HasSubstr("creator=\"Tarnvale Music\""));
    EXPECT_THAT(scan.out, HasSubstr("id=\"1417036921\"")); // TvDy
    EXPECT_THAT(scan.out, HasSubstr("category=\"Effect\""));
    EXPECT_THAT(scan.out, HasSubstr("n_inputs=\"2\" n_outputs=\"2\""));
    EXPECT_THAT(scan.out, HasSubstr("n_midi_inputs=\"0\" n_midi_outputs=\"0\""));
    EXPECT_THAT(scan.out, HasSubstr("is_instrument=\"0\""));
    EXPECT_THAT(scan.out, HasSubstr("can_process_replace=\"1\""));
    EXPECT_THAT(scan.out, HasSubstr("has_editor=\"1\""));
}

TEST(QtractorScanner, ListsTheEffectWithItsChannelsAndParameters) {
    const HostHome home;
    const ProcessResult scan =
        home.run("sh -c 'echo \"VST2:" TVDELAY_SO "\" | QT_QPA_PLATFORM=offscreen timeout 60 "
                 "/usr/lib/x86_64-linux-gnu/qtractor/qtractor_plugin_scan'");
    ASSERT_EQ(scan.status, 0) << scan.out;
    // Type, name, audio in and out, MIDI in and out, controls in and out, flags, file, index, ID.
    EXPECT_THAT(scan.out,
                HasSubstr("VST|TvDelay|2:2|0:0|9:0|GUI,RT|" TVDELAY_SO "|0|0x54764479\n"));
}

} // namespace
