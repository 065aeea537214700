#include "editor/AEffGUIEditor.h"

#include "editor/BundlePath.h"
#include "editor/hosting/EditorHosting.h"
#include "plugin/AudioEffectX.h"
#include "plugin/Truncation.h"

#include <Carbon/Carbon.h>
#include <dlfcn.h>

#include <cstdio>

namespace {

constexpr std::uint32_t kIdleRate = 100;  // ms between idle passes
constexpr std::uint32_t kIdleRateMin = 4; // ms that a call which comes early waits
constexpr std::uint32_t kIdleRate2 = 50;  // ms by which a call may come early

// Gives the effect back the editor that it had when the new one's construction fails: the effect
// deletes its editor at its own end.
class EditorInConstruction {
public:
    EditorInConstruction(AudioEffect& owner, AEffEditor* editor)
        : owner_(owner), former_(owner.getEditor()) {
        owner_.setEditor(editor);
    }
    ~EditorInConstruction() {
        if (!complete_) {
            owner_.setEditor(former_);
        }
    }
    EditorInConstruction(const EditorInConstruction&) = delete;
    EditorInConstruction& operator=(const EditorInConstruction&) = delete;

    void complete() { complete_ = true; }

private:
    AudioEffect& owner_;
    AEffEditor* former_;
    bool complete_ = false;
};

} // namespace

CFBundleRef AEffGUIEditor::effectBundle = nullptr;
VstInt32 AEffGUIEditor::knobMode = 0;

AEffGUIEditor::AEffGUIEditor(AudioEffect* owner)
    : AEffEditor(owner), rect{0, 0, 400, 344}, inIdleStuff(false) {
    EditorInConstruction construction(*effect, this);
    lastTicks = getTicks();
    effectBundle = createEffectBundle();
    construction.complete();
}

AEffGUIEditor::~AEffGUIEditor() {
    if (effectBundle != nullptr) {
        CFRelease(effectBundle);
    }
}

bool AEffGUIEditor::getRect(ERect** out) {
    *out = &rect;
    return true;
}

bool AEffGUIEditor::open(void* ptr) {
    systemWindow = ptr;
    return false;
}

void AEffGUIEditor::close() {
    systemWindow = nullptr;
}

void AEffGUIEditor::idle() {
    if (!inIdleStuff) {
        deliverEditorEvents();
    }
}

bool AEffGUIEditor::setKnobMode(VstInt32 mode) {
    knobMode = mode;
    return true;
}

void AEffGUIEditor::doIdleStuff() {
    std::uint32_t now = getTicks();
    if (now < lastTicks) {
        wait(kIdleRateMin);
        now += kIdleRateMin;
        if (now < lastTicks - kIdleRate2) {
            return;
        }
    }
    idle();
    lastTicks = now + kIdleRate;
    inIdleStuff = true;
    if (effect != nullptr) {
        effect->masterIdle();
    }
    inIdleStuff = false;
}

bool AEffGUIEditor::beforeSizeChange(const CRect& newSize, const CRect& oldSize) {
    auto* const extended = static_cast<AudioEffectX*>(effect);
    char capability[] = "sizeWindow";
    if (extended == nullptr || extended->canHostDo(capability) == 0) {
        return true;
    }
    return extended->sizeWindow(truncateToInt32(newSize.right - newSize.left),
                                truncateToInt32(newSize.bottom - newSize.top));
}

void AEffGUIEditor::beginEdit(VstInt32 index) {
    static_cast<AudioEffectX*>(effect)->beginEdit(index);
}

void AEffGUIEditor::endEdit(VstInt32 index) {
    static_cast<AudioEffectX*>(effect)->endEdit(index);
}

std::uint32_t AEffGUIEditor::getTicks() {
    return static_cast<std::uint32_t>(TickCount()) * 1000u / 60u;
}

void AEffGUIEditor::wait(std::uint32_t ms) {
    RunCurrentEventLoop(ms * 0.001);
}

CFBundleRef AEffGUIEditor::createEffectBundle() {
    Dl_info info;
    if (dladdr(reinterpret_cast<const void*>(&AEffGUIEditor::createEffectBundle), &info) == 0 ||
        info.dli_fname == nullptr) {
        return nullptr;
    }
    const std::optional<std::string> path = bundlePathOf(info.dli_fname);
    if (!path) {
        std::fputs("Could not determine bundle location.\n", stdout);
        return nullptr;
    }
    CFURLRef url = CFURLCreateFromFileSystemRepresentation(
        nullptr, reinterpret_cast<const UInt8*>(path->data()), static_cast<CFIndex>(path->size()),
        true);
    if (url == nullptr) {
        return nullptr;
    }
    CFBundleRef bundle = CFBundleCreate(nullptr, url);
    CFRelease(url);
    return bundle;
}
