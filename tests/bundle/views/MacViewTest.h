// A test on the bundle's own views. What they send is checked at its end: something has to answer
// each message, and macOS 10.9 has to have those that go to AppKit.
#pragma once

#import "tests/bundle/runtime/AppKitJournal.h"
#include "tests/bundle/runtime/MacViews.h"
#import "tests/bundle/views/MappedClasses.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/screen/ScreenPart.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

struct ParameterWrite {
    VstInt32 index;
    float value;

    bool operator==(const ParameterWrite& other) const {
        return index == other.index && value == other.value;
    }
};

class MacViewTest : public testing::Test {
protected:
    MacViewTest();
    ~MacViewTest() override;
    void TearDown() override;

    // In a borderless window of the host's, with the given content size.
    void openIn(CGFloat width, CGFloat height);
    void openAt(void* hostObject);
    void close();

    NSView* root() const;  // of the latest opening in the window
    id control(int order); // subview of the root: 0 the background, 1 to 7 knobs, 8 and 9 switches
    void press(NSView* view, NSEventType type, CGFloat x, CGFloat y); // in the view's points
    ScreenPart picture();                                             // of the window, painted anew

    NSWindow* window() const { return window_; }
    AEffect* effect() const { return effect_; }
    // By anybody since the last call, in order.
    static std::vector<ParameterWrite> takeWrites();

private:
    NSAutoreleasePool* pool_;
    RecordingHost host_;
    AEffect* effect_;
    NSWindow* window_ = nil;
};

id allocated(const char* className); // of the bundle's
NSImage* imageOf(const char* name);  // of the bundle's, by its name without ".png"

void PrintTo(const ParameterWrite& write, std::ostream* out);
