// A button that is lit while it is held.
#pragma once

#import "editor/TarnsCustomImageView13.h"

#include <cstdint>

// What the receiver of a kick button or a group button answers.
@protocol TarnsButtonReceiver
- (void)updateCenterOffsetAmountAndDisplay:(int32_t)buttonType;
- (void)updateGroupButtons:(int32_t)buttonType;
@end

// Its delegate is told of the press, and, as by a toggle, of the press and of the release.
@interface TarnsCustomKickButton10 : TarnsCustomImageView13 {
    int32_t _buttonType; // tells the delegate which button this is
}

- (id)initWithFrameAndImages:(NSRect)frame
                    imageOne:(NSImage*)imageOne
                    imageTwo:(NSImage*)imageTwo
               andButtonType:(int32_t)buttonType;

- (void)setNewDelegate:(id)delegate; // as setDelegate:

@end
