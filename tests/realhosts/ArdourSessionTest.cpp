// An Ardour session without a display makes an instance, reads its parameters and changes programs.
#include "tests/realhosts/HostHome.h"
#include "tests/support/ReferenceDelay.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <utility>
#include <vector>

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

// As Ardour writes them and sets them again: in the order of their indices.
using Values = std::array<float, 9>;

std::string textOf(const Values& values) {
    std::string text;
    for (const float value : values) {
        char number[20];
        std::snprintf(number, sizeof(number), "%s%.9g", text.empty() ? "" : " ",
                      static_cast<double>(value));
        text += number;
    }
    return text;
}

void set(ReferenceDelay& effect, const Values& values) {
    for (int i = 0; i < 9; ++i) {
        effect.setParameter(i, values[static_cast<std::size_t>(i)]);
    }
}

void runOneBlock(ReferenceDelay& effect) {
    std::vector<float> left(64), right(64);
    float* channels[] = {left.data(), right.data()};
    effect.process(channels, channels, 64);
}

Values valuesOf(const ReferenceDelay& effect) {
    Values values{};
    for (int i = 0; i < 9; ++i) {
        values[static_cast<std::size_t>(i)] = effect.getParameter(i);
    }
    return values;
}

class ReopenedArdourSession : public testing::TestWithParam<int> {};

TEST_P(ReopenedArdourSession, BringsBackWhatItsParametersMakeOfEachOther) {
    const auto rate = static_cast<float>(GetParam());
    const HostHome home;
    const ProcessResult scan = home.run("LD_LIBRARY_PATH=/usr/lib/ardour7 timeout 60 "
                                        "/usr/lib/ardour7/ardour-vst-scanner -f '" TVDELAY_SO "'");
    ASSERT_EQ(scan.status, 0) << scan.out;
    // One filter behind the loop and the other in it.
    for (const auto& types : {std::pair{0.0f, 1.0f}, {1.0f, 0.0f}}) {
        const Values values{0.43f,        0.31f, 0.62f, 0.87f, types.first,
                            types.second, 0.29f, 0.11f, 0.77f};
        SCOPED_TRACE(textOf(values));
        const std::string folder =
            (home.path() / ("session" + std::to_string(types.first) + std::to_string(types.second)))
                .string();
        const ProcessResult session =
            home.run("LXVST_PATH='" TVDELAY_BUNDLE_FOLDER "' TVDELAY_SESSION='" + folder +
                     "' TVDELAY_RATE=" + std::to_string(GetParam()) + " TVDELAY_VALUES='" +
                     textOf(values) + "' timeout 120 ardour7-lua '" TVDELAY_REOPENED_SCRIPT "'");
        ASSERT_EQ(session.status, 0) << session.out;

        ReferenceDelay effect;
        effect.setSampleRate(rate);
        runOneBlock(effect);
        set(effect, values);
        EXPECT_EQ(valuesOf(effect), values);
        EXPECT_THAT(session.out, HasSubstr("set " + textOf(values) + "\n"));

        ReferenceDelay again;
        again.setSampleRate(rate);
        set(again, values);
        runOneBlock(again);
        EXPECT_THAT(session.out, HasSubstr("again " + textOf(valuesOf(again)) + "\n"));
        // The first block at another rate than 44.1 kHz sets the high-pass anew, and with it the
        // place of the low-pass.
        EXPECT_EQ(valuesOf(again)[4], GetParam() == 44100 ? types.first : 1.0f);
    }
}

INSTANTIATE_TEST_SUITE_P(Rates, ReopenedArdourSession, testing::Values(44100, 48000));

} // namespace
