// What the check for Macs compares with.
#include "mac-check/ProgramRun.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

TEST(MacCheckReference, IsWhatTheLinuxBundleGives) {
    const ProcessResult written = runProcess(TVDELAY_WRITE_REFERENCE, {TVDELAY_PLUGIN_PATH});
    ASSERT_EQ(written.status, 0) << written.err;
    EXPECT_TRUE(written.out == readFile(TVDELAY_SOURCE_FOLDER "/mac-check/Reference.cpp"))
        << "write_reference writes it anew";
}

TEST(MacCheckReference, CountsLastBitsAlongTheLineOfAllFloats) {
    EXPECT_EQ(distanceInLastBits(0x3f800000, 0x3f800000), 0u);
    EXPECT_EQ(distanceInLastBits(0x3f800000, 0x3f800003), 3u);
    EXPECT_EQ(distanceInLastBits(0x3f7fffff, 0x3f800000), 1u);
    EXPECT_EQ(distanceInLastBits(0x00000000, 0x80000000), 0u);
    EXPECT_EQ(distanceInLastBits(0x00000001, 0x80000001), 2u);
}
