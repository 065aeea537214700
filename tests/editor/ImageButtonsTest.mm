#import "tests/editor/AppKitHost.h"

#import "editor/TarnsCustomGroupButton13.h"
#import "editor/TarnsCustomImageView13.h"
#import "editor/TarnsCustomKickButton10.h"

class ImageButtons : public AppKitHost {
protected:
    ImageButtons() : window(shownWindow(100, 100, 200, 200)) {
        off = [[[RecordingImage alloc] initWithSize:NSMakeSize(15, 16)] autorelease];
        on = [[[RecordingImage alloc] initWithSize:NSMakeSize(15, 16)] autorelease];
        delegate = [[[RecordingDelegate alloc] init] autorelease];
        toggle = [[[TarnsCustomImageView13 alloc] initWithFrameAndImages:frame
                                                                imageOne:off
                                                                imageTwo:on] autorelease];
        kick = [[[TarnsCustomKickButton10 alloc] initWithFrameAndImages:frame
                                                               imageOne:off
                                                               imageTwo:on
                                                          andButtonType:17] autorelease];
        group = [[[TarnsCustomGroupButton13 alloc] initWithFrameAndImages:frame
                                                                 imageOne:off
                                                                 imageTwo:on
                                                            andButtonType:-4] autorelease];
        for (TarnsCustomImageView13* const button :
             {toggle, static_cast<TarnsCustomImageView13*>(kick),
              static_cast<TarnsCustomImageView13*>(group)}) {
            [button setDelegate:delegate];
            [[window contentView] addSubview:button];
        }
    }
    ~ImageButtons() override { [window orderOut:nil]; }

    void press(NSView* button) { [button mouseDown:mouseEvent(NSLeftMouseDown, window, 85, 135)]; }
    void release(NSView* button) { [button mouseUp:mouseEvent(NSLeftMouseUp, window, 85, 135)]; }

    std::vector<std::string> heard() const {
        std::vector<std::string> selectors;
        for (const DelegateMessage& message : delegate->messages) {
            selectors.push_back(message.selector);
        }
        return selectors;
    }

    const NSRect frame = NSMakeRect(82, 132, 15, 16);
    NSWindow* window;
    RecordingImage* off;
    RecordingImage* on;
    RecordingDelegate* delegate;
    TarnsCustomImageView13* toggle;
    TarnsCustomKickButton10* kick;
    TarnsCustomGroupButton13* group;
};

TEST_F(ImageButtons, StartInStateZeroWithTheirFrameAndImages) {
    RecordingImage* const image = [[[RecordingImage alloc] init] autorelease];
    const NSUInteger owners = [image retainCount];
    TarnsCustomImageView13* const button =
        [[[TarnsCustomImageView13 alloc] initWithFrameAndImages:frame imageOne:image
                                                       imageTwo:image] autorelease];
    EXPECT_EQ([button imageState], 0);
    EXPECT_TRUE(NSEqualRects([button frame], frame));
    EXPECT_EQ([image retainCount], owners + 2);
}

TEST_F(ImageButtons, ToggleFlipsOncePerPress) {
    for (const int state : {1, 0, 1, 0}) {
        press(toggle);
        EXPECT_EQ([toggle imageState], state);
        release(toggle);
        EXPECT_EQ([toggle imageState], state);
    }
    ASSERT_EQ(delegate->messages.size(), 4u);
    for (const DelegateMessage& message : delegate->messages) {
        EXPECT_STREQ(message.selector, "knobUpdated");
        EXPECT_EQ(message.index, 0);
        EXPECT_EQ(message.value, nil);
        EXPECT_EQ(message.object, nil);
    }
}

TEST_F(ImageButtons, ToggleInAnyOtherStateGoesToZero) {
    [toggle setImageState:-3];
    press(toggle);
    EXPECT_EQ([toggle imageState], 0);
}

TEST_F(ImageButtons, ToggleAsksForARepaintAndSettingTheStateDoesNot) {
    [toggle setNeedsDisplay:NO];
    [toggle setImageState:1];
    EXPECT_FALSE([toggle needsDisplay]);
    press(toggle);
    EXPECT_TRUE([toggle needsDisplay]);
}

TEST_F(ImageButtons, EachDrawsTheImageOfItsState) {
    for (TarnsCustomImageView13* const button : {toggle, static_cast<TarnsCustomImageView13*>(kick),
                                                 static_cast<TarnsCustomImageView13*>(group)}) {
        for (const int state : {0, 1, -1, 2}) {
            off->drawings.clear();
            on->drawings.clear();
            [button setImageState:static_cast<signed char>(state)];
            [button drawRect:NSMakeRect(3, 4, 7, 9)];
            const auto& drawn = state != 0 ? on->drawings : off->drawings;
            const auto& hidden = state != 0 ? off->drawings : on->drawings;
            ASSERT_EQ(drawn.size(), 1u);
            EXPECT_TRUE(hidden.empty());
            EXPECT_TRUE(NSEqualRects(drawn[0].target, NSMakeRect(0, 0, 7, 9)));
            EXPECT_TRUE(NSEqualRects(drawn[0].source, NSZeroRect));
            EXPECT_EQ(drawn[0].operation, NSCompositeSourceOver);
            EXPECT_EQ(drawn[0].fraction, 1.0);
        }
    }
}

TEST_F(ImageButtons, KickIsLitWhileHeldAndTellsOfPressAndRelease) {
    press(kick);
    EXPECT_EQ([kick imageState], 1);
    EXPECT_EQ(heard(), (std::vector<std::string>{"knobUpdated", "updateCenterOffset"}));
    EXPECT_EQ(delegate->messages[1].index, 17);
    release(kick);
    EXPECT_EQ([kick imageState], 0);
    EXPECT_EQ(heard(),
              (std::vector<std::string>{"knobUpdated", "updateCenterOffset", "knobUpdated"}));
    press(kick);
    EXPECT_EQ([kick imageState], 1);
}

TEST_F(ImageButtons, KickTakesItsDelegateUnderTwoNames) {
    RecordingDelegate* const other = [[[RecordingDelegate alloc] init] autorelease];
    [kick setNewDelegate:other];
    EXPECT_EQ([kick delegate], other);
    press(kick);
    EXPECT_EQ(other->messages.size(), 2u);
    EXPECT_TRUE(delegate->messages.empty());
}

TEST_F(ImageButtons, GroupButtonTellsEveryPressAndKeepsItsState) {
    for (const int state : {0, 1}) {
        delegate->messages.clear();
        [group setImageState:static_cast<signed char>(state)];
        press(group);
        release(group);
        EXPECT_EQ(heard(), (std::vector<std::string>{"updateGroupButtons"}));
        EXPECT_EQ(delegate->messages[0].index, -4);
        EXPECT_EQ([group imageState], state);
    }
    EXPECT_TRUE([group acceptsFirstMouse:nil]);
}

TEST_F(ImageButtons, WithoutADelegateTheyLookTheSame) {
    for (TarnsCustomImageView13* const button : {toggle, static_cast<TarnsCustomImageView13*>(kick),
                                                 static_cast<TarnsCustomImageView13*>(group)}) {
        [button setDelegate:nil];
        press(button);
        EXPECT_EQ([button imageState], button == group ? 0 : 1);
        release(button);
        EXPECT_EQ([button imageState], button == toggle ? 1 : 0);
    }
}

TEST_F(ImageButtons, DelegateThatDoesNotKnowTheButtonsRaises) {
    NSObject* const stranger = [[[NSObject alloc] init] autorelease];
    [group setDelegate:stranger];
    bool raised = false;
    @try {
        press(group);
    } @catch (NSException* exception) {
        raised = [[exception name] isEqualToString:NSInvalidArgumentException];
    }
    EXPECT_TRUE(raised);
}
