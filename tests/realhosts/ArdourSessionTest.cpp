// An Ardour session without a display makes an instance, reads its parameters and changes programs.
#include "tests/realhosts/HostHome.h"
#include "tests/support/ReferenceDelay.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>

namespace {

using ::testing::HasSubstr;

constexpr const char* kParameterNames[] = {"Delay",      "FeedBack",     "lowPass",
                                           "highPass",   "lowPass Type", "highPass Type",
                                           "Left/Right", "Pan Depth",    "MIX"};

// The nine lines that the session prints for the effect's state.
std::string linesFor(const std::string& title, const ReferenceDelay& effect) {
    std::string lines;
    for (int i = 0; i < 9; ++i) {
        char line[100];
        std::snprintf(line, sizeof(line), "%s %d '%s' %.9g\n", title.c_str(), i, kParameterNames[i],
                      static_cast<double>(effect.getParameter(i)));
        lines += line;
    }
    return lines;
}

TEST(ArdourSession, ReadsParametersAndChangesPrograms) {
    const HostHome home;
    // A session takes from the scanner's cache what it may load.
    const ProcessResult scan = home.run("LD_LIBRARY_PATH=/usr/lib/ardour7 timeout 60 "
                                        "/usr/lib/ardour7/ardour-vst-scanner -f '" TVDELAY_SO "'");
    ASSERT_EQ(scan.status, 0) << scan.out;
    const ProcessResult session = home.run(
        "LXVST_PATH='" TVDELAY_BUNDLE_FOLDER "' TVDELAY_SESSION='" +
        (home.path() / "session").string() + "' timeout 120 ardour7-lua '" TVDELAY_SCRIPT "'");
    ASSERT_EQ(session.status, 0) << session.out;

    ReferenceDelay effect;
    EXPECT_THAT(session.out, HasSubstr(linesFor("start", effect)));
    const struct {
        const char* name;
        int program;
    } kVisited[] = {{"Bubbly", 9}, {"CloudFishing", 7}, {"Punk", 25}};
    for (const auto& visited : kVisited) {
        effect.setProgram(visited.program);
        EXPECT_THAT(session.out, HasSubstr(linesFor(visited.name, effect)));
    }
    effect.setParameter(8, 0.25f);
    EXPECT_THAT(session.out, HasSubstr(linesFor("set", effect)));
}

} // namespace
