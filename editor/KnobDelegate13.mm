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

- (void)createKnobs {
    NSMutableArray* const images = [[NSMutableArray alloc] init];
    [self fillArray:images];
    FlatKnob13* const time = [self knobAt:kTimeKnobPlace withImages:images];
    FlatKnob13* const mix = [self knobAt:kMixKnobPlace withImages:images];
    FlatKnob13* const feedBack = [self knobAt:kFeedBackKnobPlace withImages:images];
    FlatKnob13* const lowPass = [self knobAt:kLowPassKnobPlace withImages:images];
    FlatKnob13* const highPass = [self knobAt:kHighPassKnobPlace withImages:images];
    FlatKnob13* const panWidth = [self knobAt:kPanWidthKnobPlace withImages:images];
    FlatKnob13* const pan = [self knobAt:kPanKnobPlace withImages:images];
    for (FlatKnob13* const knob : {time, mix, feedBack, lowPass, highPass, panWidth, pan}) {
        [MainView addSubview:knob];
    }
    timeKnob = [time retain];
    mixKnob = [mix retain];
    feedBackKnob = [feedBack retain];
    lowPassKnob = [lowPass retain];
    highPassKnob = [highPass retain];
    panWidthKnob = [panWidth retain];
    panKnob = [pan retain];
}

- (void)createSwitches {
    NSImage* const off = imageNamed(@"switchoff");
    NSImage* const on = imageNamed(@"switchon");
    lowPassSwitch = newSwitch(kLowPassSwitchPlace, off, on);
    [lowPassSwitch setDelegate:self];
    [MainView addSubview:lowPassSwitch];
    highPassSwitch = newSwitch(kHighPassSwitchPlace, off, on);
    [highPassSwitch setDelegate:self];
    [MainView addSubview:highPassSwitch];
}

- (void)sendKnob:(FlatKnob13*)knob at:(const ControlPlace&)place {
    [MainView updateParameters:place.parameter
                     withValue:parameterOfStep([[knob controlPoint] ReturnValue])];
}

- (void)sendSwitch:(TarnsCustomImageView13*)toggle at:(const ControlPlace&)place {
    [MainView updateParameters:place.parameter withValue:parameterOfSwitch([toggle imageState])];
}

// Whichever control moved, all nine are sent. The low-pass switch comes after the high-pass knob,
// whose parameter moves the low-pass type too.
- (void)knobUpdatedWithIndex:(int32_t)index withValue:(id)value withObject:(id)object {
    [MainView retain];
    [self sendKnob:timeKnob at:kTimeKnobPlace];
    [self sendKnob:mixKnob at:kMixKnobPlace];
    [self sendKnob:feedBackKnob at:kFeedBackKnobPlace];
    [self sendKnob:lowPassKnob at:kLowPassKnobPlace];
    [self sendKnob:highPassKnob at:kHighPassKnobPlace];
    [self sendKnob:panWidthKnob at:kPanWidthKnobPlace];
    [self sendKnob:panKnob at:kPanKnobPlace];
    [self sendSwitch:lowPassSwitch at:kLowPassSwitchPlace];
    [self sendSwitch:highPassSwitch at:kHighPassSwitchPlace];
}

- (void)updateControllers:(int32_t)index andValue:(float)value {
    FlatKnob13* knob = nil;
    switch (index) {
    case kTimeKnobPlace.parameter:
        knob = timeKnob;
        break;
    case kFeedBackKnobPlace.parameter:
        knob = feedBackKnob;
        break;
    case kLowPassKnobPlace.parameter:
        knob = lowPassKnob;
        break;
    case kHighPassKnobPlace.parameter:
        knob = highPassKnob;
        break;
    case kLowPassSwitchPlace.parameter:
        [lowPassSwitch setImageState:switchOfParameter(value)];
        return;
    case kHighPassSwitchPlace.parameter:
        [highPassSwitch setImageState:switchOfParameter(value)];
        return;
    case kPanKnobPlace.parameter:
        knob = panKnob;
        break;
    case kPanWidthKnobPlace.parameter:
        knob = panWidthKnob;
        break;
    case kMixKnobPlace.parameter:
        knob = mixKnob;
        break;
    default:
        return;
    }
    [[knob controlPoint] setIntValue:stepOfParameter(value)];
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
