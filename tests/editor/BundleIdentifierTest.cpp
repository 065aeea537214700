#include "editor/BundleIdentifier.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

// The sources look for the bundle by the identifier that the build writes into its property list.
TEST(BundleIdentifier, IsTheOneThatTheBundleIsBuiltWith) {
    std::ifstream file(TVDELAY_BUNDLE_SETTINGS);
    const std::string settings(std::istreambuf_iterator<char>(file), {});
    EXPECT_THAT(settings, testing::HasSubstr(std::string("MACOSX_BUNDLE_GUI_IDENTIFIER ") +
                                             kBundleIdentifier + "\n"));
}
