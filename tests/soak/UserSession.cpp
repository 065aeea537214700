#include "tests/soak/UserSession.h"

#include "tests/resources/ControlPlaces.h"

#include "plugin/vst2/EffectOpcodes.h"

#include <chrono>
#include <iterator>
#include <thread>

namespace {

constexpr VstInt32 kPrograms = 26;
constexpr int kSteps = 100; // of a knob
constexpr float kRates[] = {44100.0f, 48000.0f, 88200.0f, 96000.0f};

void ask(AEffect* effect, VstInt32 opcode, VstIntPtr value = 0, float opt = 0.0f) {
    effect->dispatcher(effect, opcode, 0, value, nullptr, opt);
}

} // namespace

UserSession::UserSession(const LoadedPlugin& plugin, AEffect* effect, std::uint64_t seed)
    : plugin_(plugin), effect_(effect), dice_(seed) {}

UserSession::~UserSession() {
    closeEditor();
}

void UserSession::done(SessionThing thing) const {
    if (listener_) {
        listener_(thing);
    }
}

void UserSession::doSomething() {
    done(editor_ ? SessionThing::kEditor : SessionThing::kNothing);
    if (!editor_ && dice_.oneIn(20)) {
        editor_ = std::make_unique<HostedEditor>(effect_);
    } else if (editor_ && dice_.oneIn(150)) {
        closeEditor();
    } else if (editor_ && dice_.oneIn(15)) {
        drag();
    }
    if (dice_.oneIn(40)) {
        ask(effect_, effSetProgram, dice_.between(0, kPrograms - 1));
        ++counts_.programs;
    }
    if (dice_.oneIn(300)) {
        done(editor_ ? SessionThing::kEditor : SessionThing::kNothing);
        changeRate();
        done(SessionThing::kRate);
    }
    if (dice_.oneIn(1000)) {
        done(editor_ ? SessionThing::kEditor : SessionThing::kNothing);
        insertAndRemove();
        done(SessionThing::kInstance);
    }
    if (editor_) {
        editor_->idle();
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
}

void UserSession::openAndCloseEditor() {
    editor_ = std::make_unique<HostedEditor>(effect_);
    for (int i = 0; i < 5; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        editor_->idle();
    }
    closeEditor();
}

// A block has to make the new filters before the next change comes.
void UserSession::changeRate() {
    const auto rate = static_cast<std::size_t>(counts_.rates + 1) % std::size(kRates);
    ask(effect_, effSetSampleRate, 0, kRates[rate]);
    ++counts_.rates;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
}

void UserSession::insertAndRemove() {
    AEffect* const other = plugin_.entry()(plainHost);
    ask(other, effOpen);
    ask(other, effMainsChanged, 1);
    ask(other, effMainsChanged, 0);
    ask(other, effClose);
    ++counts_.instances;
}

void UserSession::showAllPictures() {
    editor_ = std::make_unique<HostedEditor>(effect_);
    for (int step = 0; step <= kSteps; ++step) {
        for (VstInt32 index = 0; index < effect_->numParams; ++index) {
            effect_->setParameter(effect_, index,
                                  static_cast<float>(step) / static_cast<float>(kSteps));
        }
        editor_->idle();
    }
    drag();
    closeEditor();
}

void UserSession::closeEditor() {
    if (editor_) {
        editor_.reset();
        ++counts_.editors;
        done(SessionThing::kEditor);
    }
}

void UserSession::drag() {
    const ControlPlace& knob =
        kKnobPlaces[static_cast<std::size_t>(dice_.between(0, kKnobPlaces.size() - 1))];
    const int x = static_cast<int>(knob.centreX());
    const int y = static_cast<int>(knob.centreY());
    editor_->mouse.dragAtOnce(x, y, x, y + static_cast<int>(dice_.between(-60, 60)));
    ++counts_.drags;
}
