// What tests ask of the bundle's classes, which no header of this process declares.
#pragma once

#import <AppKit/AppKit.h>

#include <cstdint>

@interface NSObject (MappedClasses)
- (int32_t)ReturnValue;
- (float)currentDraggedAngle;
- (int32_t)currentAngle;
- (id)controlPoint;
- (NSRect)makeRectWithWidth:(int32_t)width;
- (signed char)imageState;
- (void)setImageState:(signed char)state;
- (signed char)acceptsFirstMouse:(NSEvent*)event;
- (id)initWithFrameAndImages:(NSRect)frame
                    imageOne:(NSImage*)one
                    imageTwo:(NSImage*)two
               andButtonType:(int32_t)type;
- (id)initWithFrameAndImages:(NSRect)frame imageOne:(NSImage*)one imageTwo:(NSImage*)two;
- (void)setNewDelegate:(id)delegate;
- (id)initWithFrameandImage:(NSRect)frame
            backgroundImage:(NSImage*)background
                  knobImage:(NSImage*)knob;
- (int32_t)SliderCellWidth;
- (int32_t)SliderCellHeight;
- (void)setCaseValue:(int32_t)value;
- (id)initWithFrame:(NSRect)frame andValue:(int32_t)value;
- (id)initWithImage:(NSImage*)image andFrame:(NSRect)frame;
- (uint32_t)currentSamples;
- (void)setcurrentSamples:(uint32_t)samples;
- (void)setOwner:(id)owner;
- (id)colorFromHexString:(NSString*)text;
- (id)createLabelWithFrame:(NSRect)frame;
- (uint32_t)interfaceVersion;
- (NSView*)uiViewForAudioUnit:(void*)audioUnit withSize:(NSSize)size;
@end
