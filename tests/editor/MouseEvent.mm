#import "tests/editor/MouseEvent.h"

NSEvent* mouseEvent(NSEventType type, NSWindow* window, CGFloat x, CGFloat y) {
    return [NSEvent mouseEventWithType:type
                              location:NSMakePoint(x, y)
                         modifierFlags:0
                             timestamp:0
                          windowNumber:[window windowNumber]
                               context:nil
                           eventNumber:0
                            clickCount:1
                              pressure:1.0f];
}
