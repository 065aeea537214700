// Exceptions on their way through the macOS bundle's code, by its own unwind table.
#import "tests/bundle/views/MacViewTest.h"

#include "tests/bundle/runtime/FailingAllocations.h"

namespace {

class Exceptions : public MacViewTest {};

} // namespace

TEST_F(Exceptions, OfAppKitPassThroughAView) {
    openIn(344, 400);
    effect()->setParameter(effect(), 6, 1.5f); // a step without a frame
    bool came = false;
    @try {
        [control(7) drawRect:NSMakeRect(0, 0, 48, 48)];
    } @catch (NSException* exception) {
        came = [[exception name] isEqual:NSRangeException];
    }
    EXPECT_TRUE(came);
}

TEST_F(Exceptions, OfAppKitPassThroughTwoViews) {
    openIn(344, 400);
    effect()->setParameter(effect(), 6, 1.5f);
    bool came = false;
    @try {
        [[control(7) controlPoint] drawRect:NSMakeRect(0, 0, 48, 48)];
    } @catch (NSException* exception) {
        came = [[exception name] isEqual:NSRangeException];
    }
    EXPECT_TRUE(came);
}

// Whichever allocation fails on the way to an instance, the failure comes to the host, and the
// instance's own memory goes.
TEST_F(Exceptions, OfAllocationsPassThroughTheEntry) {
    int number = 0;
    for (bool failed = true; failed; ++number) {
        const FailingAllocation failure(number);
        AEffect* made = nullptr;
        const bool came =
            runsOutOfMemory([&] { made = MacViews::shared().newEffect(RecordingHost::callback); });
        if (came) {
            EXPECT_EQ(failure.firstIsReleased(), number > 0) << number;
        }
        EXPECT_EQ(came, failure.happened()) << number;
        failed = failure.happened();
        EXPECT_EQ(made == nullptr, failed) << number;
        ASSERT_LT(number, 100);
    }
    EXPECT_GT(number, 5);
}
