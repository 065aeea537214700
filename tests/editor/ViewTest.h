// A test on views: with a screen, AppKit and a pool.
#pragma once

#import <AppKit/AppKit.h>

#include <gtest/gtest.h>

#include <objc/runtime.h>

class ViewTest : public testing::Test {
protected:
    ViewTest();
    ~ViewTest() override;

private:
    NSAutoreleasePool* pool_;
};

// A picture of one colour.
NSImage* plainImage(NSColor* colour, NSSize size);
// The same, with nothing in its left half.
NSImage* transparentAtTheLeft(NSColor* colour, NSSize size);

// An instance variable by its name, which the class must have.
template <typename Value>
Value& variable(id object, const char* name) {
    const Ivar found = class_getInstanceVariable(object_getClass(object), name);
    return *reinterpret_cast<Value*>(reinterpret_cast<char*>(object) + ivar_getOffset(found));
}

bool sameColour(NSColor* one, NSColor* other);
