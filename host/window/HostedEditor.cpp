#include "host/window/HostedEditor.h"

#include "host/base/UserError.h"

#include <algorithm>

namespace tvhost {

namespace {

// Of the window when the effect tells the size of its editor only after it has opened.
constexpr EditorSize kFirstSize{640, 480};

EditorSize firstSize(const EffectInstance& effect) {
    const EditorSize size = effect.editorSize();
    return size.isUsable() ? size : kFirstSize;
}

} // namespace

void HostedEditor::requireEditor(const EffectInstance& effect) {
    if (!effect.hasEditor()) {
        throw UserError(effect.name() + " has no editor; give a plug-in with one");
    }
}

HostedEditor::HostedEditor(EffectInstance& effect_, EditorWindow::Kind kind)
    : effect(effect_), frame(effect.name(), firstSize(effect), kind), silence(kBlockSize),
      output(kBlockSize),
      // Channels may share a buffer: what goes in is always silence, and nobody hears what comes
      // out.
      inputs(static_cast<std::size_t>(effect.inputCount()), silence.data()),
      outputs(static_cast<std::size_t>(effect.outputCount()), output.data()) {
    effect.setSizeRequestHandler([this](int width, int height) { return resize({width, height}); });
    const bool opened = effect.openEditor(frame.handle());
    // Not every effect answers truly, so a window inside counts for more.
    if (!opened && !frame.holdsWindow()) {
        effect.setSizeRequestHandler(nullptr);
        throw UserError(effect.name() +
                        " did not open its editor; give a plug-in whose editor works on X11");
    }
    resize(effect.editorSize());
}

HostedEditor::~HostedEditor() {
    effect.closeEditor();
    effect.setSizeRequestHandler(nullptr);
}

bool HostedEditor::resize(EditorSize size) {
    if (!size.isUsable()) {
        return false;
    }
    if (size != frame.size()) {
        frame.resize(size);
    }
    return true;
}

void HostedEditor::advance(int frames) {
    while (effect.canReplace() && frames > 0) {
        const int block = std::min(frames, kBlockSize);
        effect.process(inputs.data(), outputs.data(), block);
        // An effect may work in place on what it was given.
        std::fill(silence.begin(), silence.end(), 0.0f);
        frames -= block;
    }
    effect.idleEditor();
}

} // namespace tvhost
