#import "tests/editor/AppKitHost.h"
#import "tests/editor/MouseEvent.h"

#import "editor/TarnsCustomGroupButton13.h"
#import "editor/TarnsCustomImageView13.h"
#import "editor/TarnsCustomKickButton10.h"
#import "editor/TarnsUiView13.h"

#include <objc/runtime.h>

namespace {

using ViewInitialiser = id (*)(id, SEL, NSRect);

IMP inheritedInit = nullptr;
NSRect frameAtInit; // of the view, when its base is initialised

id noteFrameAndInit(id self, SEL selector, NSRect frame) {
    if ([self isMemberOfClass:[TarnsCustomImageView13 class]]) {
        frameAtInit = [self frame];
    }
    return reinterpret_cast<ViewInitialiser>(inheritedInit)(self, selector, frame);
}

RecordingDelegate* presses = nil; // notes the base's presses among its own messages

void notePress(id self, SEL selector, NSEvent* event) {
    presses->messages.push_back({"inherited press", 0, event, nil, 0.0f, 0});
}

} // namespace

// A button that answers with another delegate than it keeps.
@interface RedirectedButton : TarnsCustomKickButton10 {
@public
    id answered;
}
@end

@implementation RedirectedButton
- (id)delegate {
    return answered;
}
@end

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

TEST_F(ImageButtons, FrameIsStoredAheadOfTheBasesInitialisation) {
    const Method initialiser =
        class_getInstanceMethod([NSImageView class], @selector(initWithFrame:));
    inheritedInit = method_setImplementation(initialiser, reinterpret_cast<IMP>(noteFrameAndInit));
    [[[TarnsCustomImageView13 alloc] initWithFrameAndImages:frame imageOne:off
                                                   imageTwo:on] autorelease];
    method_setImplementation(initialiser, inheritedInit);
    EXPECT_TRUE(NSEqualRects(frameAtInit, frame));
}

TEST_F(ImageButtons, PressGoesToTheBaseFirst) {
    presses = delegate;
    const Method press = class_getInstanceMethod([NSImageView class], @selector(mouseDown:));
    const IMP own = method_setImplementation(press, reinterpret_cast<IMP>(notePress));
    this->press(toggle);
    release(toggle);
    EXPECT_EQ(heard(), (std::vector<std::string>{"inherited press", "knobUpdated"}));
    delegate->messages.clear();
    this->press(kick);
    EXPECT_EQ(heard(),
              (std::vector<std::string>{"inherited press", "knobUpdated", "updateCenterOffset"}));
    delegate->messages.clear();
    release(kick);
    EXPECT_EQ(heard(), (std::vector<std::string>{"inherited press", "knobUpdated"}));
    EXPECT_EQ([static_cast<NSEvent*>(delegate->messages[0].value) type], NSLeftMouseUp);
    delegate->messages.clear();
    this->press(group);
    release(group);
    EXPECT_EQ(heard(), (std::vector<std::string>{"updateGroupButtons"}));
    method_setImplementation(press, own);
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

TEST_F(ImageButtons, KickAsksForARepaintAtPressAndRelease) {
    [kick setNeedsDisplay:NO];
    press(kick);
    EXPECT_TRUE([kick needsDisplay]);
    [kick setNeedsDisplay:NO];
    release(kick);
    EXPECT_TRUE([kick needsDisplay]);
}

TEST_F(ImageButtons, GroupButtonAsksForARepaintAtPressAlone) {
    [group setNeedsDisplay:NO];
    press(group);
    EXPECT_TRUE([group needsDisplay]);
    [group setNeedsDisplay:NO];
    release(group);
    EXPECT_FALSE([group needsDisplay]);
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

TEST_F(ImageButtons, ToggleWithoutImagesDrawsNothingAndTakesClicks) {
    TarnsCustomImageView13* const bare =
        [[[TarnsCustomImageView13 alloc] initWithFrameAndImages:frame imageOne:nil
                                                       imageTwo:nil] autorelease];
    [bare setDelegate:delegate];
    [bare drawRect:NSMakeRect(0, 0, 15, 16)];
    press(bare);
    [bare drawRect:NSMakeRect(0, 0, 15, 16)];
    EXPECT_EQ([bare imageState], 1);
    EXPECT_EQ(heard(), (std::vector<std::string>{"knobUpdated"}));
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

TEST_F(ImageButtons, KickIsLitBeforeItTellsItsReceiverAndToggledBeforeItTellsTheRouter) {
    delegate->button = kick;
    for (const int state : {0, 1}) {
        [kick setImageState:static_cast<signed char>(state)];
        delegate->messages.clear();
        press(kick);
        release(kick);
        ASSERT_EQ(delegate->messages.size(), 3u);
        EXPECT_EQ(delegate->messages[0].state, 1 - state);
        EXPECT_EQ(delegate->messages[1].state, 1);
        EXPECT_EQ(delegate->messages[2].state, 0);
        EXPECT_EQ([kick imageState], 0);
    }
}

TEST_F(ImageButtons, KickTakesItsDelegateUnderTwoNames) {
    RecordingDelegate* const other = [[[RecordingDelegate alloc] init] autorelease];
    [kick setNewDelegate:other];
    EXPECT_EQ([kick delegate], other);
    press(kick);
    EXPECT_EQ(other->messages.size(), 2u);
    EXPECT_TRUE(delegate->messages.empty());
}

TEST_F(ImageButtons, ToggleAsksForItsDelegateAndKickTakesItsOwn) {
    RedirectedButton* const button =
        [[[RedirectedButton alloc] initWithFrameAndImages:frame
                                                 imageOne:off
                                                 imageTwo:on
                                            andButtonType:5] autorelease];
    RecordingDelegate* const other = [[[RecordingDelegate alloc] init] autorelease];
    button->answered = other;
    [button setDelegate:delegate];
    press(button);
    ASSERT_EQ(other->messages.size(), 1u);
    EXPECT_STREQ(other->messages[0].selector, "knobUpdated");
    EXPECT_EQ(heard(), (std::vector<std::string>{"updateCenterOffset"}));
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
    TarnsUiView13* const view = [[TarnsUiView13 alloc] initWithFrame:NSMakeRect(0, 0, 344, 400)
                                                           andEffect:nullptr];
    [view awakeFromNib];
    id const router = [view valueForKey:@"KnobView"]; // it knows toggles alone
    for (TarnsCustomImageView13* const button : {static_cast<TarnsCustomImageView13*>(kick),
                                                 static_cast<TarnsCustomImageView13*>(group)}) {
        [button setDelegate:router];
        bool raised = false;
        @try {
            press(button);
        } @catch (NSException* exception) {
            raised = [[exception name] isEqualToString:NSInvalidArgumentException];
        }
        EXPECT_TRUE(raised);
    }
    [toggle setDelegate:router];
    press(toggle);
    EXPECT_EQ([toggle imageState], 1);
}
