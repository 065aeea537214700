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

HostedEditor::HostedEditor(EffectInstance& effect, EditorWindow::Kind kind)
    : effect_(effect), frame_(effect_.name(), firstSize(effect_), kind), silence_(kBlockSize),
      output_(kBlockSize),
      // Channels may share a buffer: what goes in is always silence, and nobody hears what comes
      // out.
      inputs_(static_cast<std::size_t>(effect_.inputCount()), silence_.data()),
      outputs_(static_cast<std::size_t>(effect_.outputCount()), output_.data()) {
    const auto resizeTo = [this](int width, int height) { return resize({width, height}); };
    effect_.setSizeRequestHandler(resizeTo);
    const bool opened = effect_.openEditor(frame_.handle());
    // Not every effect answers truly, so a window inside counts for more.
    if (!opened && !frame_.holdsWindow()) {
        effect_.setSizeRequestHandler(nullptr);
        throw UserError(effect_.name() +
                        " did not open its editor; give a plug-in whose editor works on X11");
    }
    resize(effect_.editorSize());
}

HostedEditor::~HostedEditor() {
    effect_.closeEditor();
    effect_.setSizeRequestHandler(nullptr);
}

bool HostedEditor::resize(EditorSize size) {
    if (!size.isUsable()) {
        return false;
    }
    if (size != frame_.size()) {
        frame_.resize(size);
    }
    return true;
}

void HostedEditor::advance(int frames) {
    while (effect_.canReplace() && frames > 0) {
        const int block = std::min(frames, kBlockSize);
        effect_.process(inputs_.data(), outputs_.data(), block);
        // An effect may work in place on what it was given.
        std::fill(silence_.begin(), silence_.end(), 0.0f);
        frames -= block;
    }
    effect_.idleEditor();
}

} // namespace tvhost
