#import <QuartzCore/QuartzCore.h>

namespace {

// Views don't own their entries and don't take them along when they go: an address that is used
// again starts with what setWantsLayer: makes of it.
NSMapTable* layersOfViews() {
    static NSMapTable* const layers =
        NSCreateMapTable(NSNonOwnedPointerMapKeyCallBacks, NSObjectMapValueCallBacks, 0);
    return layers;
}

} // namespace

@implementation NSView (Layers)

- (void)setWantsLayer:(BOOL)wanted {
    if (!wanted) {
        NSMapRemove(layersOfViews(), self);
        return;
    }
    CALayer* const layer = [[CALayer alloc] init];
    NSMapInsert(layersOfViews(), self, layer);
    [layer release];
}

- (CALayer*)layer {
    return static_cast<CALayer*>(NSMapGet(layersOfViews(), self));
}

@end
