#include "host/play/LevelMeter.h"

#include <gtest/gtest.h>

using tvhost::LevelMeter;

TEST(LevelMeter, TellsTimeLevelsAndDropouts) {
    EXPECT_EQ(LevelMeter::line(44100 * 65, 44100 * 600, 44100, {1.0f, 0.0625f}, 0),
              "1:05 / 10:00  [################]  [########........]  0.0 dBFS");
    EXPECT_EQ(LevelMeter::line(0, 0, 44100, {2.0f}, 3),
              "0:00  [################!  6.0 dBFS  dropouts 3");
    EXPECT_EQ(LevelMeter::line(0, 0, 44100, {0.0f}, 0), "0:00  [................]  -inf dBFS");
}
