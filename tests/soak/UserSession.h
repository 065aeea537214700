// What a user does on the host's user-interface thread: opens and closes the editor, drags in it,
// changes programs and rates, inserts the effect and removes it again.
#pragma once

#include "tests/support/Dice.h"
#include "tests/support/LoadedPlugin.h"
#include "tests/support/screen/HostedEditor.h"

#include "plugin/vst2/AEffect.h"

#include <cstdint>
#include <memory>

class UserSession {
public:
    // What has been done so far.
    struct Counts {
        std::int64_t editors; // opened and closed again
        std::int64_t drags;
        std::int64_t programs;
        std::int64_t rates;
        std::int64_t instances; // inserted beside `effect` and removed again
    };

    // `effect` outlives the session. Needs a screen.
    UserSession(const LoadedPlugin& plugin, AEffect* effect, std::uint64_t seed);
    ~UserSession(); // closes the editor

    // Does the next thing, which takes some 20 ms.
    void doSomething();

    // The single things, which a measurement of their memory repeats.
    void openAndCloseEditor();
    void changeRate();
    void insertAndRemove();

    void closeEditor();
    const Counts& counts() const { return counts_; }

private:
    void drag();

    const LoadedPlugin& plugin_;
    AEffect* effect_;
    Dice dice_;
    Counts counts_{};
    std::unique_ptr<HostedEditor> editor_;
};
