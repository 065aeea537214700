// The open editor of an effect, and the effect running behind it.
#pragma once

#include "host/plugin/EffectInstance.h"
#include "host/presets/EffectSettings.h"
#include "host/window/EditorWindow.h"

#include <vector>

namespace tvhost {

// The open editor of an effect that is switched on and hears silence. All calls from the thread of
// the effect's other calls.
class HostedEditor {
public:
    static constexpr int kSampleRate = 44100; // Hz
    static constexpr int kBlockSize = 512;    // frames

    // Throws UserError when the effect has no editor.
    static void requireEditor(const EffectInstance& effect);

    // `effect` must be started at the sample rate and block size above and outlive this. Throws
    // UserError when its editor cannot be opened.
    HostedEditor(EffectInstance& effect, EditorWindow::Kind kind);
    // Closes the editor, then the window.
    ~HostedEditor();
    HostedEditor(const HostedEditor&) = delete;
    HostedEditor& operator=(const HostedEditor&) = delete;

    EditorWindow& window() { return frame_; }

    // Sets the effect once more to what it was set to before the editor opened: controls may show
    // nothing but changes. Throws UserError as EffectSettings::apply() does.
    void applyAgain(const EffectSettings& settings) { settings.apply(effect_); }

    // Lets the effect process `frames` frames of silence, then gives its editor time.
    void advance(int frames);

private:
    bool resize(EditorSize size);

    EffectInstance& effect_;
    EditorWindow frame_;
    std::vector<float> silence_;
    std::vector<float> output_;
    std::vector<float*> inputs_;
    std::vector<float*> outputs_;
};

} // namespace tvhost
