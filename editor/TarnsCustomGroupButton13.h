// A button of a group: a press is told to the delegate, which sets the states of the group.
#pragma once

#import "editor/TarnsCustomKickButton10.h"

@interface TarnsCustomGroupButton13 : TarnsCustomKickButton10
@end
