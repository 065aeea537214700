#include "host/check/EditorStage.h"

#include "host/base/UserError.h"

#include <X11/Xlib.h>

#include <chrono>
#include <thread>

namespace tvhost {

namespace {

constexpr EditorStage::Size kUsualSize{640, 480};
constexpr auto kTurn = std::chrono::milliseconds(20);

int ignoreError(Display*, XErrorEvent*) {
    return 0;
}

} // namespace

EditorStage::EditorStage(CheckRun& run, CheckedEffect& effect) : effect_(effect) {
    effect.requireEditor();
    XInitThreads();
    XSetErrorHandler(ignoreError);
    display_ = XOpenDisplay(nullptr);
    if (!display_) {
        throw UserError("there is no display to open the editor on");
    }
    size_ = toldSize();
    if (!size_.isUsable()) {
        size_ = kUsualSize;
    }
    effect_.setSizeRequestHandler([this](int width, int height) {
        size_ = {width, height};
        if (!size_.isUsable() || window_ == 0) {
            return false;
        }
        XResizeWindow(display_, window_, static_cast<unsigned>(width),
                      static_cast<unsigned>(height));
        XSync(display_, False);
        return true;
    });
    makeWindow();
}

EditorStage::~EditorStage() {
    close();
    effect_.setSizeRequestHandler(nullptr);
    destroyWindow();
    XCloseDisplay(display_);
}

EditorStage::Size EditorStage::toldSize() {
    ERect* rectangle = nullptr;
    effect_.call(effEditGetRect, 0, 0, &rectangle);
    if (!rectangle) {
        return {};
    }
    return {rectangle->right - rectangle->left, rectangle->bottom - rectangle->top};
}

bool EditorStage::open() {
    open_ = true;
    const bool answer = effect_.call(effEditOpen, 0, 0, reinterpret_cast<void*>(window_)) != 0;
    return answer || !children().empty();
}

void EditorStage::idle(int milliseconds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    do {
        effect_.call(effEditIdle);
        while (XPending(display_) > 0) {
            XEvent event;
            XNextEvent(display_, &event);
        }
        std::this_thread::sleep_for(kTurn);
    } while (std::chrono::steady_clock::now() < end);
}

void EditorStage::close() {
    if (open_) {
        open_ = false;
        effect_.call(effEditClose);
    }
}

std::vector<EditorStage::Size> EditorStage::children() const {
    XSync(display_, False);
    Window root = 0;
    Window parent = 0;
    Window* windows = nullptr;
    unsigned count = 0;
    std::vector<Size> result;
    if (XQueryTree(display_, window_, &root, &parent, &windows, &count) == 0) {
        return result;
    }
    for (unsigned i = 0; i < count; ++i) {
        XWindowAttributes attributes;
        if (XGetWindowAttributes(display_, windows[i], &attributes) != 0) {
            result.push_back({attributes.width, attributes.height});
        }
    }
    if (windows) {
        XFree(windows);
    }
    return result;
}

void EditorStage::destroyWindow() {
    if (window_ != 0) {
        XDestroyWindow(display_, window_);
        XSync(display_, False);
        window_ = 0;
    }
}

void EditorStage::makeWindow() {
    const int screen = DefaultScreen(display_);
    window_ = XCreateSimpleWindow(display_, RootWindow(display_, screen), 0, 0,
                                  static_cast<unsigned>(size_.width),
                                  static_cast<unsigned>(size_.height), 0, 0, 0);
    XMapWindow(display_, window_);
    XSync(display_, False);
}

} // namespace tvhost
