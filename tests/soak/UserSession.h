// What a user does on the host's user-interface thread: opens and closes the editor, drags in it,
// changes programs and rates, inserts the effect and removes it again.
#pragma once

#include "tests/support/Dice.h"
#include "tests/support/LoadedPlugin.h"
#include "tests/support/screen/HostedEditor.h"

#include "plugin/vst2/AEffect.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

// What memory is noted for.
enum class SessionThing { kEditor, kRate, kInstance, kNothing };
constexpr std::size_t kSessionThings = 4;

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

    // Is told of each thing once it is done, and of the time between them as kNothing.
    using Listener = std::function<void(SessionThing)>;
    void setListener(Listener listener) { listener_ = std::move(listener); }

    // Does the next thing, which takes some 20 ms.
    void doSomething();

    // The single things, which a measurement of their memory repeats.
    void openAndCloseEditor();
    void changeRate();
    void insertAndRemove();

    // Shows each of its pictures once, since AppKit keeps what it has drawn of them.
    void showAllPictures();

    void closeEditor();
    const Counts& counts() const { return counts_; }

private:
    void drag();
    void done(SessionThing thing) const;

    const LoadedPlugin& plugin_;
    AEffect* effect_;
    Dice dice_;
    Counts counts_{};
    std::unique_ptr<HostedEditor> editor_;
    Listener listener_;
};
