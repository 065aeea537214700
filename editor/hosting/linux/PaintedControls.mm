#include "editor/hosting/linux/PaintedControls.h"

#import "editor/ControlPoint13.h"
#import "editor/FlatKnob13.h"
#import "editor/TarnsCustomImageView13.h"

#include <optional>
#include <unordered_map>

namespace {

using PaintedStates = std::unordered_map<NSView*, std::optional<int>>;

PaintedStates& paintedStates() {
    static auto* const states = new PaintedStates;
    return *states;
}

} // namespace

NSArray* controlsIn(NSView* rootView) {
    NSMutableArray* const controls = [NSMutableArray array];
    for (NSView* const view in [rootView subviews]) {
        if ([view isKindOfClass:[FlatKnob13 class]] ||
            [view isKindOfClass:[TarnsCustomImageView13 class]]) {
            [controls addObject:view];
        }
    }
    return controls;
}

int stateOfControl(NSView* control) {
    if ([control isKindOfClass:[FlatKnob13 class]]) {
        return [[static_cast<FlatKnob13*>(control) controlPoint] ReturnValue];
    }
    return [static_cast<TarnsCustomImageView13*>(control) imageState];
}

void watchControl(NSView* control) {
    paintedStates()[control] = std::nullopt;
}

void forgetControl(NSView* control) {
    paintedStates().erase(control);
}

void notePainting(NSView* control, NSRect dirtyRect, int stateBefore) {
    const auto found = paintedStates().find(control);
    if (found == paintedStates().end()) {
        return;
    }
    const bool known =
        NSContainsRect(dirtyRect, [control bounds]) && stateOfControl(control) == stateBefore;
    found->second = known ? std::optional<int>(stateBefore) : std::nullopt;
}

bool isPaintedAsItStands(NSView* control) {
    const auto found = paintedStates().find(control);
    return found == paintedStates().end() || found->second == stateOfControl(control);
}
