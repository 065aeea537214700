#include "tests/support/screen/HostedEditor.h"

#include "plugin/vst2/EffectOpcodes.h"

HostedEditor::HostedEditor(AEffect* hosted, int left, int top)
    : effect(hosted), window(left, top), mouse(left, top + HostWindow::kHeight),
      openAnswer(effect->dispatcher(effect, effEditOpen, 0, 0, window.handle(), 0.0f)) {
    idle();
}

HostedEditor::~HostedEditor() {
    close();
}

void HostedEditor::idle() {
    effect->dispatcher(effect, effEditIdle, 0, 0, nullptr, 0.0f);
}

void HostedEditor::close() {
    if (!closed_) {
        effect->dispatcher(effect, effEditClose, 0, 0, nullptr, 0.0f);
        closed_ = true;
    }
}

bool HostedEditor::shows(const FaceControls& controls) {
    return becomes([&] { return showsFace(window.screen(), controls); });
}

bool HostedEditor::becomes(const std::function<bool()>& condition) {
    return idleUntil([this] { idle(); }, condition);
}

ScreenPart HostedEditor::settledScreen() {
    ScreenPart before = window.screen();
    becomes([&] {
        const ScreenPart now = window.screen();
        const bool settled = differenceOf(now, before).largest == 0;
        before = now;
        return settled;
    });
    return before;
}
