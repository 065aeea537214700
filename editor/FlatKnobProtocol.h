// What a control tells its delegate when the user moved it.
#pragma once

#import <Foundation/Foundation.h>

#include <cstdint>

@protocol FlatKnobProtocol
// A knob gives its new step, the number at that place of its list and its visible part; other
// controls give what they have, or 0 and nil.
- (void)knobUpdatedWithIndex:(int32_t)index withValue:(id)value withObject:(id)object;
@end
