// What AppKit may hand to the views to draw, by its version.
#import "tests/bundle/views/MacViewTest.h"

#import "tests/bundle/runtime/AppKitSupplement.h"
#include "tests/support/screen/ExpectedFace.h"
#include "tests/support/screen/SlapBack.h"

#include <algorithm>

namespace {

using testing::ElementsAre;
using testing::Not;

class Clipping : public MacViewTest {
protected:
    ~Clipping() override {
        supplement::handsWideRectangles = false;
        supplement::viewsClip = true;
    }

    // The window with the view over the face.
    ScreenPart pictureWith(NSView* view, bool wide) {
        supplement::handsWideRectangles = wide;
        [root() addSubview:view];
        const ScreenPart shown = picture();
        [view removeFromSuperview];
        return shown;
    }

    void expectTheSameWithWideRectangles(NSView* view) {
        const ScreenPart narrow = pictureWith(view, false);
        const ScreenPart wide = pictureWith(view, true);
        EXPECT_EQ(differenceOf(narrow, wide).largest, 0);
    }
};

NSView* newKickButton() {
    return [allocated("TarnsCustomKickButton10") initWithFrameAndImages:NSMakeRect(10, 20, 30, 40)
                                                               imageOne:imageOf("switchoff")
                                                               imageTwo:imageOf("switchon")
                                                          andButtonType:7];
}

} // namespace

TEST_F(Clipping, KeepsTheFaceWhereRectanglesReachBeyondTheViews) {
    supplement::handsWideRectangles = true;
    openIn(344, 400);
    EXPECT_TRUE(showsFace(picture(), kSlapBack));
}

TEST_F(Clipping, KeepsTheFaceWhereTheHostsWindowIsLarger) {
    openIn(344, 400);
    [window() setFrame:NSMakeRect(50, 50, 600, 500) display:NO];
    supplement::handsWideRectangles = true;
    const ScreenPart whole = picture();
    ScreenPart face;
    face.width = 344;
    face.height = 400;
    for (int row = 100; row < 500; ++row) {
        for (int column = 0; column < 344; ++column) {
            face.pixels.push_back(whole.at(column, row));
        }
    }
    EXPECT_TRUE(showsFace(face, kSlapBack));
}

TEST_F(Clipping, IsAskedOfEachViewOnceTheEditorIsShown) {
    openIn(344, 400);
    const auto& all = journal();
    const auto added = std::find_if(all.begin(), all.end(), [](const std::string& entry) {
        return entry.find("add TarnsUiView13") == 0;
    });
    ASSERT_NE(added, all.end());
    std::vector<std::string> before(all.begin(), added);
    std::vector<std::string> after(added + 1, all.end());
    EXPECT_THAT(before, Not(testing::Contains(testing::HasSubstr("clips"))));
    EXPECT_EQ(std::count(after.begin(), after.end(), "TarnsUiView13 clips 1"), 1);
    EXPECT_EQ(std::count(after.begin(), after.end(), "DetatchedView13 clips 1"), 1);
    EXPECT_EQ(std::count(after.begin(), after.end(), "FlatKnob13 clips 1"), 7);
    EXPECT_EQ(std::count(after.begin(), after.end(), "ControlPoint13 clips 1"), 7);
    EXPECT_EQ(std::count(after.begin(), after.end(), "TarnsCustomImageView13 clips 1"), 2);
}

TEST_F(Clipping, IsNotAskedWhereViewsDontAnswer) {
    supplement::viewsClip = false;
    openIn(344, 400);
    newKickButton();
    const auto& all = journal();
    EXPECT_TRUE(std::none_of(all.begin(), all.end(), [](const std::string& entry) {
        return entry.find(" clips ") != std::string::npos;
    }));
    EXPECT_TRUE(showsFace(picture(), kSlapBack));
}

TEST_F(Clipping, KeepsButtonsThatNoEditorMakes) {
    openIn(344, 400);
    expectTheSameWithWideRectangles(newKickButton());
    expectTheSameWithWideRectangles([allocated("TarnsCustomGroupButton13")
        initWithFrameAndImages:NSMakeRect(10, 20, 30, 40)
                      imageOne:imageOf("switchoff")
                      imageTwo:imageOf("switchon")
                 andButtonType:9]);
}

TEST_F(Clipping, KeepsTheSlider) {
    openIn(344, 400);
    expectTheSameWithWideRectangles([allocated("TarnsCustomSlider13")
        initWithFrameandImage:NSMakeRect(20, 20, 300, 42)
              backgroundImage:imageOf("bmp00131")
                    knobImage:imageOf("bmp00130")]);
    EXPECT_THAT(journalOf("TarnsCustomSlider13 clips"), ElementsAre("TarnsCustomSlider13 clips 1"));
}

TEST_F(Clipping, KeepsTheTexts) {
    openIn(344, 400);
    expectTheSameWithWideRectangles([allocated("TarnsCustomDisplayView10")
        initWithFrame:NSMakeRect(20, 300, 60, 20)
             andValue:-42]);
    NSView* const text = [allocated("sTextView13") initWithFrame:NSMakeRect(0, 0, 300, 300)];
    [text setOwner:root()];
    expectTheSameWithWideRectangles(text);
    EXPECT_THAT(journalOf("sTextView13 clips"), ElementsAre("sTextView13 clips 1"));
}

TEST_F(Clipping, KeepsTheLoadingView) {
    openIn(344, 400);
    expectTheSameWithWideRectangles([allocated("lWindowView9")
        initWithImage:imageOf("loadback")
             andFrame:NSMakeRect(40, 40, 250, 121)]);
}
