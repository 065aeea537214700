#include "editor/EditorGeometry.h"

#include <gtest/gtest.h>

TEST(EditorGeometry, FloatingWindowStandsOffTheMiddleOfTheScreen) {
    EXPECT_EQ(floatingOrigin(1280, 800).x, 320.0);
    EXPECT_EQ(floatingOrigin(1280, 800).y, 93.0);
}

TEST(EditorGeometry, FloatingWindowOriginIsCutToWholePoints) {
    EXPECT_EQ(floatingOrigin(1281, 801).x, 320.0);
    EXPECT_EQ(floatingOrigin(1281, 801).y, 93.0);
    EXPECT_EQ(floatingOrigin(639, 613).x, 0.0);
    EXPECT_EQ(floatingOrigin(639, 613).y, 0.0);
}

TEST(EditorGeometry, FloatingWindowWithoutAScreen) {
    EXPECT_EQ(floatingOrigin(0, 0).x, -320.0);
    EXPECT_EQ(floatingOrigin(0, 0).y, -307.0);
}

TEST(EditorGeometry, HostWindowKeepsItsTitleBar) {
    EXPECT_EQ(hostWindowHeight(500, 478), 422.0);
    EXPECT_EQ(hostWindowHeight(400, 400), 400.0);
    EXPECT_EQ(hostWindowHeight(300, 0), 700.0);
    EXPECT_EQ(hostWindowHeight(500.75, 478.5), 422.0);
}
