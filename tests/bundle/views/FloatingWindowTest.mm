// The window that the macOS bundle's editor opens for hosts of the old kind.
#import "tests/bundle/views/MacViewTest.h"

#import "tests/bundle/runtime/AppKitSupplement.h"
#import "tests/editor/ViewWindow.h"
#include "tests/support/screen/ExpectedFace.h"
#include "tests/support/screen/SlapBack.h"

#include "plugin/vst2/EffectOpcodes.h"

namespace {

class FloatingWindow : public MacViewTest {
protected:
    FloatingWindow() {
        supplement::windowReferences = true;
        openAt(&reference_);
        for (NSWindow* const each in [NSApp windows]) {
            if (object_getClass(each) == MacViews::shared().classNamed("tarnsCustomWindow10") &&
                [each isVisible]) {
                opened_ = each;
            }
        }
    }
    ~FloatingWindow() override { supplement::windowReferences = false; }

    NSWindow* opened() const { return opened_; }

private:
    int reference_ = 0;
    NSWindow* opened_ = nil;
};

} // namespace

TEST_F(FloatingWindow, IsMadeOffTheCentreOfTheScreen) {
    ASSERT_NE(opened(), nil);
    EXPECT_THAT(journalOf("window tarnsCustomWindow10"),
                testing::ElementsAre("window tarnsCustomWindow10 (320 93 344 400) style 7 "
                                     "backing 2 defer 1 screen first"));
}

TEST_F(FloatingWindow, FloatsAndIsNotOpaque) {
    ASSERT_NE(opened(), nil);
    EXPECT_THAT(journalOf("window level"), testing::ElementsAre("window level for key 5"));
    EXPECT_EQ([opened() level], 3);
    EXPECT_FALSE([opened() isOpaque]);
    EXPECT_TRUE([opened() isAutodisplay]);
    EXPECT_TRUE([[opened() backgroundColor] isEqual:[NSColor blackColor]]);
    EXPECT_FALSE([opened() isReleasedWhenClosed]);
}

TEST_F(FloatingWindow, ShowsTheFace) {
    ASSERT_NE(opened(), nil);
    NSView* const content = [opened() contentView];
    EXPECT_STREQ(object_getClassName(content), "TarnsUiView13");
    EXPECT_EQ([[content subviews] count], 10u);
}

TEST_F(FloatingWindow, LeavesTheToldSizeAlone) {
    ERect* rect = nullptr;
    effect()->dispatcher(effect(), effEditGetRect, 0, 0, &rect, 0.0f);
    EXPECT_EQ(rect->bottom, 100);
    EXPECT_EQ(rect->right, 100);
}

TEST_F(FloatingWindow, ClosesWithTheEditor) {
    ASSERT_NE(opened(), nil);
    close();
    EXPECT_FALSE([opened() isVisible]);
}

TEST_F(FloatingWindow, ClosedByTheUserIsNotClosedAgain) {
    ASSERT_NE(opened(), nil);
    [opened() close];
    close();
    EXPECT_FALSE([opened() isVisible]);
    effect()->setParameter(effect(), 6, 1.0f); // reaches no view that is shown
}
