// Its editor is an X11 window of one colour: red by its parameter, green once it has processed a
// tenth of a second. The programs are ways in which editors behave. The file that PAINTER_JOURNAL
// names gets a line when the editor closes, with how the window that it lay in fared.
#include "tests/host/plugins/TestEffect.h"

#include <X11/Xlib.h>

#include <cstdlib>
#include <fstream>

namespace {

enum Behaviour {
    kPlain,
    kLate,     // tells its size only once it is open
    kGrowing,  // asks for another size when it is given time first
    kUntrue,   // says that it didn't open, and shows itself
    kRefusing, // says that it didn't open
    kEmpty,    // says that it opened, and shows nothing
    kRestless, // another colour each time
    kEarly,    // doesn't open unless there was a display when it was made
    kBehaviours
};

constexpr const char* kNames[] = {"Plain",    "Late",  "Growing",  "Untrue",
                                  "Refusing", "Empty", "Restless", "Early"};

class Painter : public TestEffect {
public:
    explicit Painter(audioMasterCallback master) : TestEffect(master, 2, 2, 1, kBehaviours) {
        record.flags |= effFlagsHasEditor;
    }

protected:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                       float opt) override {
        switch (opcode) {
        case effGetEffectName:
            return give(ptr, "Painter \xC3\xA9");
        case effGetParamName:
            return give(ptr, "Red");
        case effGetProgram:
            return behaviour_;
        case effSetProgram:
            behaviour_ = static_cast<int>(value);
            return 0;
        case effGetProgramNameIndexed:
            return give(ptr, kNames[index]);
        case effEditGetRect:
            *static_cast<ERect**>(ptr) = behaviour_ == kLate && !display_ ? nullptr : &rectangle_;
            return 1;
        case effEditOpen:
            open(reinterpret_cast<Window>(ptr));
            return behaviour_ == kEmpty || (behaviour_ != kUntrue && child_ != 0);
        case effEditIdle:
            idle();
            return 0;
        case effEditClose:
            close();
            return 0;
        default:
            return TestEffect::dispatch(opcode, index, value, ptr, opt);
        }
    }
    void setParameter(int, float value) override { red_ = value; }
    float getParameter(int) override { return red_; }
    void process(float** in, float** out, int frames) override {
        TestEffect::process(in, out, frames);
        processed_ += frames;
    }

private:
    void open(Window window) {
        if (behaviour_ == kRefusing || (behaviour_ == kEarly && !bornWithDisplay_)) {
            return;
        }
        parent_ = window;
        if (behaviour_ == kLate) {
            rectangle_ = {0, 0, 100, 200};
        }
        display_ = XOpenDisplay(nullptr);
        if (!display_ || behaviour_ == kEmpty) {
            return;
        }
        child_ = XCreateSimpleWindow(display_, parent_, 0, 0, width(), height(), 0, 0, colour());
        XMapWindow(display_, child_);
        XSync(display_, False);
    }
    void idle() {
        if (!child_) {
            return;
        }
        if (behaviour_ == kGrowing && rectangle_.right == 120) {
            rectangle_ = {0, 0, 90, 160};
            if (host(&record, audioMasterSizeWindow, 160, 90, nullptr, 0.0f) == 1) {
                XResizeWindow(display_, child_, width(), height());
            }
        }
        if (behaviour_ == kRestless) {
            ++blue_;
        }
        XSetWindowBackground(display_, child_, colour());
        XClearWindow(display_, child_);
        XFlush(display_);
    }
    void close() {
        if (const char* const path = std::getenv("PAINTER_JOURNAL")) {
            XWindowAttributes attributes;
            const bool there = display_ && XGetWindowAttributes(display_, parent_, &attributes);
            std::ofstream(path) << (there ? "closed in its window\n" : "closed without a window\n");
        }
        if (display_) {
            XCloseDisplay(display_);
        }
        display_ = nullptr;
        child_ = 0;
    }
    unsigned long colour() const {
        const auto level = static_cast<unsigned long>(red_ * 255.0f);
        return level << 16 | (processed_ >= 4410 ? 0xFF00u : 0u) | (blue_ & 0xFFu);
    }
    unsigned width() const { return static_cast<unsigned>(rectangle_.right); }
    unsigned height() const { return static_cast<unsigned>(rectangle_.bottom); }

    int behaviour_ = kPlain;
    bool bornWithDisplay_ = std::getenv("DISPLAY") != nullptr;
    float red_ = 1.0f;
    long processed_ = 0;
    unsigned blue_ = 0;
    ERect rectangle_{0, 0, 80, 120}; // top, left, bottom, right
    Display* display_ = nullptr;
    Window parent_ = 0;
    Window child_ = 0;
};

} // namespace

EXPORT_EFFECT(Painter)
