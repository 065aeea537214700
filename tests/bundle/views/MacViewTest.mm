#import "tests/bundle/views/MacViewTest.h"

#include "tests/bundle/runtime/Messages.h"
#import "tests/editor/ViewWindow.h"

#include "plugin/vst2/EffectOpcodes.h"

#include <ostream>
#include <stdexcept>
#include <utility>

namespace {

std::vector<ParameterWrite> writes;
void (*setParameter)(void*, VstInt32, float);

void writeDown(void* effect, VstInt32 index, float value) {
    writes.push_back({index, value});
    setParameter(effect, index, value);
}

// Puts the recorder into the table of the effect's virtual functions. Once in a process.
void recordWrites() {
    if (setParameter != nullptr) {
        return;
    }
    const BundleImage& image = MacViews::shared().image();
    void* const original = image.local("__ZN9VstXSynth12setParameterEif");
    constexpr int kMost = 200; // functions of a table
    auto** const table = static_cast<void**>(image.local("__ZTV9VstXSynth"));
    for (int i = 0; i < kMost; ++i) {
        if (table[i] == original) {
            setParameter = reinterpret_cast<void (*)(void*, VstInt32, float)>(original);
            table[i] = reinterpret_cast<void*>(writeDown);
            return;
        }
    }
    throw std::runtime_error("the effect's table has no setParameter");
}

} // namespace

MacViewTest::MacViewTest() {
    pool_ = [[NSAutoreleasePool alloc] init];
    MacViews::shared();
    recordWrites();
    forgetSentMessages();
    forgetJournal();
    host_.answer = 2400;
    effect_ = MacViews::shared().newEffect(RecordingHost::callback);
    writes.clear();
}

MacViewTest::~MacViewTest() {
    effect_->dispatcher(effect_, effEditClose, 0, 0, nullptr, 0.0f);
    effect_->dispatcher(effect_, effClose, 0, 0, nullptr, 0.0f);
    [window_ close];
    [pool_ release];
}

void MacViewTest::TearDown() {
    EXPECT_THAT(unansweredMessages(), testing::IsEmpty());
    EXPECT_THAT(unlistedMessages(), testing::IsEmpty());
}

void MacViewTest::openIn(CGFloat width, CGFloat height) {
    window_ = [[NSWindow alloc] initWithContentRect:NSMakeRect(50, 50, width, height)
                                          styleMask:NSBorderlessWindowMask
                                            backing:NSBackingStoreBuffered
                                              defer:NO];
    [window_ orderFrontRegardless];
    forgetJournal();
    openAt([window_ contentView]);
}

void MacViewTest::openAt(void* hostObject) {
    ASSERT_EQ(effect_->dispatcher(effect_, effEditOpen, 0, 0, hostObject, 0.0f), 1);
}

void MacViewTest::close() {
    effect_->dispatcher(effect_, effEditClose, 0, 0, nullptr, 0.0f);
}

NSView* MacViewTest::root() const {
    NSView* const latest = [[[window_ contentView] subviews] lastObject];
    if (latest == nil) {
        throw std::runtime_error("the window shows no editor");
    }
    return latest;
}

id MacViewTest::control(int order) {
    return [[root() subviews] objectAtIndex:static_cast<NSUInteger>(order)];
}

void MacViewTest::press(NSView* view, NSEventType type, CGFloat x, CGFloat y) {
    NSEvent* const event = [NSEvent mouseEventWithType:type
                                              location:[view convertPoint:NSMakePoint(x, y)
                                                                   toView:nil]
                                         modifierFlags:0
                                             timestamp:0
                                          windowNumber:[[view window] windowNumber]
                                               context:nil
                                           eventNumber:0
                                            clickCount:1
                                              pressure:1.0f];
    switch (type) {
    case NSLeftMouseDown:
        [view mouseDown:event];
        break;
    case NSLeftMouseDragged:
        [view mouseDragged:event];
        break;
    default:
        [view mouseUp:event];
        break;
    }
}

ScreenPart MacViewTest::picture() {
    [window_ display];
    return screenOf(window_);
}

std::vector<ParameterWrite> MacViewTest::takeWrites() {
    return std::exchange(writes, {});
}

id allocated(const char* name) {
    return [MacViews::shared().classNamed(name) alloc];
}

NSImage* imageOf(const char* name) {
    const std::string path = macBundle() + "/Contents/Resources/" + name + ".png";
    return [[NSImage alloc] initByReferencingFile:[NSString stringWithUTF8String:path.c_str()]];
}

void PrintTo(const ParameterWrite& write, std::ostream* out) {
    *out << write.index << " = " << write.value;
}
