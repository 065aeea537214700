// The editor in a window that comes, goes and shows what is in it.
#include "host/check/CheckedEffect.h"
#include "host/check/EditorStage.h"
#include "host/check/checks/Checks.h"

namespace tvhost::checks {

namespace {

constexpr int kTimes = 5;
constexpr int kShort = 100; // ms
constexpr int kLong = 500;  // until an editor has its size

std::string inWords(EditorStage::Size size) {
    return std::to_string(size.width) + " by " + std::to_string(size.height);
}

} // namespace

void editorOpensAndCloses(CheckRun& run) {
    CheckedEffect effect(run);
    for (int i = 1; i <= kTimes; ++i) {
        run.doing("time " + std::to_string(i) + " of " + std::to_string(kTimes));
        EditorStage stage(run, effect);
        const bool opened = stage.open();
        stage.idle(kShort);
        if (!opened && stage.children().empty()) {
            run.finding("closed", "it has an editor, says that it did not open and shows nothing, "
                                  "time " +
                                      std::to_string(i));
            return;
        }
    }
}

void editorLeavesNoWindow(CheckRun& run) {
    CheckedEffect effect(run);
    EditorStage stage(run, effect);
    stage.open();
    stage.idle(kLong);
    stage.close();
    const std::vector<EditorStage::Size> left = stage.children();
    if (!left.empty()) {
        run.finding("left", "after it has closed, a window of " + inWords(left.front()) +
                                " pixels still lies in the host's");
    }
}

void editorSizeAsTold(CheckRun& run) {
    CheckedEffect effect(run);
    EditorStage stage(run, effect);
    stage.open();
    stage.idle(kLong);
    const EditorStage::Size told = stage.toldSize();
    if (!told.isUsable()) {
        run.finding("none", "its editor is open and tells a size of " + inWords(told));
        return;
    }
    bool fits = false;
    const std::vector<EditorStage::Size> children = stage.children();
    for (const EditorStage::Size& size : children) {
        fits = fits || (size.width == told.width && size.height == told.height);
    }
    if (!children.empty() && !fits) {
        run.finding("differs", "it tells a size of " + inWords(told) +
                                   " pixels, and its window is " + inWords(children.front()));
    }
}

void editorLosesItsWindow(CheckRun& run) {
    CheckedEffect effect(run);
    EditorStage stage(run, effect);
    stage.open();
    stage.idle(kShort);
    run.doing("after its window was destroyed");
    stage.destroyWindow();
    stage.idle(kShort);
    stage.close();
    run.doing("opened anew after its window was destroyed");
    stage.makeWindow();
    stage.open();
    stage.idle(kShort);
}

} // namespace tvhost::checks
