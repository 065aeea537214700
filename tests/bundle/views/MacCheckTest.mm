// The program that checks the bundle on Macs, run here with the bundle's own code.
#import "tests/bundle/views/MacViewTest.h"

#import "tests/bundle/runtime/AppKitSupplement.h"
#include "tests/bundle/runtime/MappedCheck.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/screen/ExpectedFace.h"
#include "tests/support/screen/Picture.h"
#include "tests/support/screen/SlapBack.h"

#include <cstring>

namespace {

using testing::HasSubstr;
using testing::Not;

class MacCheck : public MacViewTest {
protected:
    ~MacCheck() override { supplement::handsWideRectangles = false; }

    int run(const std::vector<std::string>& arguments) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const int status = runMappedCheck(arguments);
        shown_ = testing::internal::GetCapturedStdout();
        error_ = testing::internal::GetCapturedStderr();
        return status;
    }

    std::string report() const { return readFile(folder_.file("report/report.txt")); }
    std::string folder() const { return folder_.file("report"); }
    const std::string& shown() const { return shown_; }
    const std::string& error() const { return error_; }

    ScreenPart saved(const char* name) const {
        const Picture picture = Picture::load(folder() + "/" + name);
        ScreenPart part;
        part.width = picture.width();
        part.height = picture.height();
        for (int row = 0; row < part.height; ++row) {
            for (int column = 0; column < part.width; ++column) {
                part.pixels.push_back(picture.at(column, row));
            }
        }
        return part;
    }

private:
    TemporaryFolder folder_;
    std::string shown_;
    std::string error_;
};

} // namespace

TEST_F(MacCheck, TellsOfSystemRecordAndSound) {
    EXPECT_EQ(run({macBundle(), folder()}), 0);
    const std::string text = report();
    EXPECT_EQ(text, shown());
    EXPECT_THAT(text, HasSubstr("AppKit: 1265.00\n"));
    EXPECT_THAT(text, HasSubstr("Machine: Test1,1\n"));
    EXPECT_THAT(text, HasSubstr("Identifier: TvDy\n"));
    EXPECT_THAT(text, HasSubstr("Programs 26, parameters 9, inputs 2, outputs 2, flags 0x11"));
    EXPECT_THAT(text, HasSubstr("Product: Tarnvale's Delay\n"));
    EXPECT_THAT(text, HasSubstr("Programs that sound the same: 26 of 26\n"));
    EXPECT_THAT(text, HasSubstr("Texts of parameter 8: "));
    EXPECT_THAT(text, Not(HasSubstr("DIFFERENT")));
    EXPECT_THAT(text, HasSubstr("Unloaded: yes\n"));
}

TEST_F(MacCheck, ShowsTheEditorAndDragsAKnob) {
    supplement::handsWideRectangles = true;
    EXPECT_EQ(run({macBundle(), folder()}), 0);
    const std::string text = report();
    EXPECT_THAT(journalOf("activation"), testing::ElementsAre("activation policy 0"));
    EXPECT_THAT(text, HasSubstr("Opened: 1\n"));
    EXPECT_THAT(text, HasSubstr("Views in the host's view: 1\n"));
    EXPECT_THAT(text, HasSubstr("Told size: 344 x 400\n"));
    EXPECT_THAT(text, HasSubstr("Under the mouse: ControlPoint13\n"));
    EXPECT_THAT(text, HasSubstr("Drag of FeedBack: from 0.215000004 to 0.319999993\n"));
    EXPECT_TRUE(showsFace(saved("editor.png"), kSlapBack));
    FaceControls dragged = kSlapBack;
    dragged[1] = 40; // step 32
    EXPECT_TRUE(showsFace(saved("editor-dragged.png"), dragged));
}

TEST_F(MacCheck, NotesTheRectanglesWithAndWithoutClipping) {
    supplement::handsWideRectangles = true;
    EXPECT_EQ(run({macBundle(), folder()}), 0);
    const std::string text = report();
    const std::size_t unclipped = text.find("With clipsToBounds NO:");
    ASSERT_NE(unclipped, std::string::npos);
    const std::string whole = "drawRect: of FlatKnob13, bounds (0 0 48 48), was handed (0 0 48 48)";
    const std::string wide = "was handed (-154 -202 344 400)";
    EXPECT_LT(text.find(whole), unclipped);
    EXPECT_GT(text.find(wide), unclipped);
    EXPECT_NE(text.find(wide), std::string::npos);
}

TEST_F(MacCheck, SaysThatABundleIsMissing) {
    EXPECT_EQ(run({"/nowhere/TvDelay.vst", folder()}), 1);
    EXPECT_THAT(report(), HasSubstr("NOT LOADED: there is no such file\n"));
}

TEST_F(MacCheck, SaysThatNothingCanBeWritten) {
    EXPECT_EQ(run({macBundle(), "/proc/none"}), 2);
    EXPECT_THAT(error(), HasSubstr("nothing can be written into /proc/none"));
    EXPECT_EQ(shown(), "");
}

TEST_F(MacCheck, SaysWhatItTakes) {
    EXPECT_EQ(run({"a", "b", "c"}), 2);
    EXPECT_THAT(error(), HasSubstr("name the bundle and the folder"));
}
