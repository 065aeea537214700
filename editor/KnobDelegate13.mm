#import "editor/KnobDelegate13.h"

#import "editor/ControlPoint13.h"
#import "editor/DetatchedView13.h"
#import "editor/FlatKnob13.h"
#import "editor/TarnsCustomImageView13.h"
#import "editor/TarnsUiView13.h"

#include "editor/ControlConversions.h"
#include "editor/ControlTable.h"
#include "editor/EditorGeometry.h"
#include "editor/HexColour.h"
#include "plugin/AudioEffect.h"

#import <QuartzCore/QuartzCore.h>

#include <algorithm>
#include <array>

namespace {

NSRect frameOf(const ControlPlace& place) {
    return NSMakeRect(place.x, place.y, place.width, place.height);
}

NSBundle* ownBundle() {
    return [NSBundle bundleForClass:[TarnsUiView13 class]];
}

NSImage* imageNamed(NSString* name) {
    return [[NSImage alloc] initByReferencingFile:[ownBundle() pathForImageResource:name]];
}

NSImage* knobFrameNamed(NSString* name) {
    return [[NSImage alloc] initByReferencingFile:[ownBundle() pathForResource:name ofType:@"png"]];
}

FlatKnob13* newKnob(const ControlPlace& place, NSMutableArray* images) {
    return [[FlatKnob13 alloc] initWithFrame:frameOf(place)
                                  withInsets:2
                    withControlPointDiameter:3
                       withControlPointColor:[NSColor clearColor]
                               withKnobColor:[NSColor clearColor]
                         withBackgroundColor:[NSColor clearColor]
                              pointerToArray:images];
}

TarnsCustomImageView13* newSwitch(const ControlPlace& place, NSImage* off, NSImage* on) {
    return [[TarnsCustomImageView13 alloc] initWithFrameAndImages:frameOf(place)
                                                         imageOne:off
                                                         imageTwo:on];
}

} // namespace

@implementation KnobDelegate13

- (id)initWithView:(TarnsUiView13*)view {
    self = [super init];
    if (self != nil) {
        MainView = [view retain];
        [self createSubView];
        [self createKnobs];
        [self createSwitches];
    }
    return self;
}

- (void)createSubView {
    DetatchedView13* const background =
        [[DetatchedView13 alloc] initWithImage2:imageNamed(@"delaybackground")
                                       withRect:NSMakeRect(0, 0, kEditorWidth, kEditorHeight)];
    [MainView addSubview:background positioned:NSWindowBelow relativeTo:nil];
}

- (FlatKnob13*)knobAt:(const ControlPlace&)place withImages:(NSMutableArray*)images {
    AudioEffect* const effect = [MainView getEffect];
    const int32_t step =
        effect == nullptr ? 0 : initialStepOfParameter(effect->getParameter(place.parameter));
    FlatKnob13* const knob = newKnob(place, images);
    [knob setControl:0];
    [[knob controlPoint] setDelegate:self];
    [[knob controlPoint] setData:[self generateArrayFrom:0 to:100]];
    [[knob controlPoint] setIntValue:step]; // its angle needs the data
    return knob;
}

// Where the knob of a parameter is kept; null for those without a knob.
- (FlatKnob13**)knobOf:(int32_t)parameter {
    switch (parameter) {
    case kDelay:
        return &timeKnob;
    case kFeedBack:
        return &feedBackKnob;
    case kLowPass:
        return &lowPassKnob;
    case kHighPass:
        return &highPassKnob;
    case kLeftRight:
        return &panKnob;
    case kPanDepth:
        return &panWidthKnob;
    case kMix:
        return &mixKnob;
    default:
        return nullptr;
    }
}

// The same for switches.
- (TarnsCustomImageView13**)switchOf:(int32_t)parameter {
    switch (parameter) {
    case kLowPassType:
        return &lowPassSwitch;
    case kHighPassType:
        return &highPassSwitch;
    default:
        return nullptr;
    }
}

- (void)createKnobs {
    NSMutableArray* const images = [[NSMutableArray alloc] init];
    [self fillArray:images];
    std::array<FlatKnob13*, kKnobPlaces.size()> knobs;
    std::transform(
        kKnobPlaces.begin(), kKnobPlaces.end(), knobs.begin(),
        [&](const ControlPlace& place) { return [self knobAt:place withImages:images]; });
    for (FlatKnob13* const knob : knobs) {
        [MainView addSubview:knob];
    }
    for (std::size_t i = 0; i < knobs.size(); ++i) {
        *[self knobOf:kKnobPlaces[i].parameter] = [knobs[i] retain];
    }
}

- (void)createSwitches {
    NSImage* const off = imageNamed(@"switchoff");
    NSImage* const on = imageNamed(@"switchon");
    for (const ControlPlace& place : kSwitchPlaces) {
        TarnsCustomImageView13* const toggle = newSwitch(place, off, on);
        *[self switchOf:place.parameter] = toggle;
        [toggle setDelegate:self];
        [MainView addSubview:toggle];
    }
}

// Whichever control moved, all nine are sent.
- (void)knobUpdatedWithIndex:(int32_t)index withValue:(id)value withObject:(id)object {
    [MainView retain];
    for (const ControlPlace& place : kKnobPlaces) {
        FlatKnob13* const knob = *[self knobOf:place.parameter];
        [MainView updateParameters:place.parameter
                         withValue:parameterOfStep([[knob controlPoint] ReturnValue])];
    }
    for (const ControlPlace& place : kSwitchPlaces) {
        TarnsCustomImageView13* const toggle = *[self switchOf:place.parameter];
        [MainView updateParameters:place.parameter
                         withValue:parameterOfSwitch([toggle imageState])];
    }
}

- (void)updateControllers:(int32_t)index andValue:(float)value {
    if (FlatKnob13** const knob = [self knobOf:index]) {
        [[*knob controlPoint] setIntValue:stepOfParameter(value)];
    } else if (TarnsCustomImageView13** const toggle = [self switchOf:index]) {
        [*toggle setImageState:switchOfParameter(value)];
    }
}

- (NSMutableArray*)generateArrayFrom:(int32_t)from to:(int32_t)to {
    NSMutableArray* const numbers = [[NSMutableArray alloc] init];
    for (int32_t number = from; number < to; ++number) {
        [numbers addObject:[NSNumber numberWithInt:number]];
    }
    return numbers;
}

- (void)fillArray:(NSMutableArray*)array {
    constexpr int kFrames = 128;
    [array addObject:knobFrameNamed(@"fxknob0")];
    for (int i = 1; i < kFrames; ++i) {
        [array addObject:knobFrameNamed([NSString stringWithFormat:@"fxknob%d", i])];
    }
}

- (NSTextField*)createLabelWithFrame:(NSRect)frame {
    NSTextField* const label = [[NSTextField alloc] initWithFrame:frame];
    [label setStringValue:@"Value: -"];
    [label setBezeled:NO];
    [label setDrawsBackground:NO];
    [label setEditable:NO];
    [label setSelectable:NO];
    [label setAlignment:NSCenterTextAlignment];
    [label setWantsLayer:YES];
    [[label layer] setBorderWidth:0.0];
    [[label layer] setBorderColor:[[NSColor blackColor] CGColor]];
    return label;
}

- (NSColor*)colorFromHexString:(NSString*)text {
    unsigned hex = 0;
    NSScanner* const scanner = [NSScanner scannerWithString:text];
    [scanner setScanLocation:1];
    [scanner scanHexInt:&hex];
    const RgbComponents rgb = rgbOfHex(hex);
    return [NSColor colorWithSRGBRed:rgb.red green:rgb.green blue:rgb.blue alpha:1.0];
}

- (void)createKnob {
    FlatKnob13* const knob = [[FlatKnob13 alloc] initWithFrame:NSMakeRect(10, 30, 100, 100)];
    [knob setControl:0];
    [[knob controlPoint] setDelegate:self];
    [[knob controlPoint] setData:[self generateArrayFrom:0 to:100]];
    [MainView addSubview:knob];
    [MainView addSubview:[self createLabelWithFrame:NSMakeRect(10, 10, 100, 17)]];
}

- (void)creatSliders {
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
}

@end
