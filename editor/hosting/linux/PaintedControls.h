// What the knobs and switches of open editors were last painted as. For the editors' thread.
#pragma once

#import <AppKit/AppKit.h>

// Those among the subviews of an editor's root view.
NSArray* controlsIn(NSView* rootView);

// What a control stands for now: the step of a knob, the state of a switch.
int stateOfControl(NSView* control);

// From the first to the second, what is noted of `control` is kept.
void watchControl(NSView* control);
void forgetControl(NSView* control);

// To be called after each drawing of `dirtyRect`, with what the control stood for before it.
// Nothing is known of a control that was drawn in part, or that has changed meanwhile.
void notePainting(NSView* control, NSRect dirtyRect, int stateBefore);

// False for a watched control that stands for something else than it was last painted as, and for
// one of which nothing is known.
bool isPaintedAsItStands(NSView* control);
