// The classes as the runtime knows them.
#import "tests/editor/AppKitHost.h"

#import "editor/ControlPoint13.h"
#import "editor/DetatchedView13.h"
#import "editor/FlatKnob13.h"
#import "editor/FlatKnobProtocol.h"
#import "editor/KnobDelegate13.h"
#import "editor/TarnsCustomGroupButton13.h"
#import "editor/TarnsCustomImageView13.h"
#import "editor/TarnsCustomKickButton10.h"
#import "editor/TarnsUiView13.h"
#import "editor/tarnsCustomWindow10.h"

#include <objc/runtime.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace {

std::vector<std::string> fieldsOf(Class described) {
    unsigned count = 0;
    Ivar* const fields = class_copyIvarList(described, &count);
    std::vector<std::string> names;
    names.reserve(count);
    for (unsigned i = 0; i < count; ++i) {
        names.push_back(ivar_getName(fields[i]));
    }
    std::free(fields);
    return names;
}

std::string typeOf(Class described, const char* field) {
    return ivar_getTypeEncoding(class_getInstanceVariable(described, field));
}

void expectOperations(Class described, const std::vector<const char*>& names) {
    for (const char* name : names) {
        EXPECT_TRUE(class_getInstanceMethod(described, sel_registerName(name)) != nullptr) << name;
    }
}

using Names = std::vector<std::string>;

} // namespace

class Classes : public AppKitHost {};

TEST_F(Classes, HaveTheirBases) {
    EXPECT_EQ([ControlPoint13 superclass], [NSView class]);
    EXPECT_EQ([FlatKnob13 superclass], [NSView class]);
    EXPECT_EQ([DetatchedView13 superclass], [NSView class]);
    EXPECT_EQ([TarnsUiView13 superclass], [NSView class]);
    EXPECT_EQ([KnobDelegate13 superclass], [NSObject class]);
    EXPECT_EQ([TarnsCustomImageView13 superclass], [NSImageView class]);
    EXPECT_EQ([TarnsCustomKickButton10 superclass], [TarnsCustomImageView13 class]);
    EXPECT_EQ([TarnsCustomGroupButton13 superclass], [TarnsCustomKickButton10 class]);
    EXPECT_EQ([tarnsCustomWindow10 superclass], [NSWindow class]);
    EXPECT_TRUE([KnobDelegate13 conformsToProtocol:objc_getProtocol("FlatKnobProtocol")]);
    EXPECT_TRUE([KnobDelegate13 conformsToProtocol:objc_getProtocol("NSApplicationDelegate")]);
}

TEST_F(Classes, HaveTheirFieldsInOrder) {
    EXPECT_EQ(fieldsOf([ControlPoint13 class]),
              (Names{"_currentDraggedAngle", "_currentAngle", "_mouseDownPosition",
                     "_previousValue", "_value", "_insets", "_controlPointDiameter",
                     "_controlPointColor", "_data", "_delegate"}));
    EXPECT_EQ(fieldsOf([FlatKnob13 class]),
              (Names{"_insets", "_backgroundColor", "_knobColor", "_BackgroundImage",
                     "_animationImages", "_control", "_controlPoint"}));
    EXPECT_EQ(fieldsOf([DetatchedView13 class]), (Names{"BackgroundImage", "_Owner"}));
    EXPECT_EQ(fieldsOf([TarnsUiView13 class]),
              (Names{"BackgroundImage", "KnobView", "mAU", "mAUEventListener", "BkView",
                     "_volumeSliderText", "_subDetachedView", "_volumeSliderVal",
                     "_panningSliderVal", "_effect"}));
    EXPECT_EQ(fieldsOf([KnobDelegate13 class]),
              (Names{"MainView", "timeKnob", "mixKnob", "feedBackKnob", "lowPassKnob",
                     "highPassKnob", "panWidthKnob", "panKnob", "lowPassSwitch", "highPassSwitch",
                     "sliderBackground", "sliderKnob"}));
    EXPECT_EQ(fieldsOf([TarnsCustomImageView13 class]),
              (Names{"_delegate", "state1Image", "state2Image", "_imageState"}));
    EXPECT_EQ(fieldsOf([TarnsCustomKickButton10 class]), (Names{"_buttonType"}));
    EXPECT_EQ(fieldsOf([TarnsCustomGroupButton13 class]), Names{});
    EXPECT_EQ(fieldsOf([tarnsCustomWindow10 class]), (Names{"_editor", "_winPointerRef"}));
}

TEST_F(Classes, HaveFieldsOfTheirWidths) {
    EXPECT_EQ(typeOf([ControlPoint13 class], "_currentDraggedAngle"), "f");
    for (const char* field : {"_currentAngle", "_mouseDownPosition", "_previousValue", "_value",
                              "_insets", "_controlPointDiameter"}) {
        EXPECT_EQ(typeOf([ControlPoint13 class], field), "i") << field;
    }
    EXPECT_EQ(typeOf([FlatKnob13 class], "_control"), "i");
    EXPECT_EQ(typeOf([TarnsUiView13 class], "_volumeSliderVal"), "i");
    EXPECT_EQ(typeOf([TarnsUiView13 class], "_panningSliderVal"), "i");
    EXPECT_EQ(typeOf([TarnsCustomImageView13 class], "_imageState"), "c");
    EXPECT_EQ(typeOf([TarnsCustomKickButton10 class], "_buttonType"), "i");
}

TEST_F(Classes, AnswerTheirOperations) {
    expectOperations([ControlPoint13 class], {
        "initWithFrame:withInsets:withControlPointDiameter:withControlPointColor:withPosition:",
            "ReturnValue", "value", "setIntValue:", "setValue:", "updateWithYcoord:",
            "makeRectWithWidth:", "mouseDown:", "mouseUp:", "mouseDragged:", "drawRect:",
            "acceptsFirstMouse:", "mouseDownCanMoveWindow", "currentDraggedAngle",
            "setCurrentDraggedAngle:", "currentAngle", "setCurrentAngle:", "mouseDownPosition",
            "setMouseDownPosition:", "previousValue", "setPreviousValue:", "insets",
            "setInsets:", "controlPointDiameter", "setControlPointDiameter:", "controlPointColor",
            "setControlPointColor:", "data", "setData:", "delegate", "setDelegate:"
    });
    expectOperations([FlatKnob13 class], {
        ("initWithFrame:withInsets:withControlPointDiameter:withControlPointColor:"
         "withKnobColor:withBackgroundColor:pointerToArray:"),
            "drawRect:", "control", "setControl:", "controlPoint", "setControlPoint:"
    });
    expectOperations([TarnsUiView13 class], {
        "initWithFrame:andEffect:", "awakeFromNib", "getEffect",
            "setEffect:", "updateParameters:withValue:", "updateView:andValue:", "subDetachedView",
            "setSubDetachedView:", "volumeSliderText", "setVolumeSliderText:", "volumeSliderVal",
            "setVolumeSliderVal:", "panningSliderVal"
    });
    expectOperations([KnobDelegate13 class], {
        "initWithView:", "createSubView", "createKnobs", "createSwitches",
            "knobUpdatedWithIndex:withValue:withObject:", "updateControllers:andValue:",
            "generateArrayFrom:to:", "fillArray:", "createLabelWithFrame:", "colorFromHexString:",
            "createKnob", "creatSliders", "applicationDidFinishLaunching:"
    });
    expectOperations([DetatchedView13 class], {
        "initWithImage2:withRect:", "Owner", "setOwnder:", "awakeFromNib", "drawRect:"
    });
    expectOperations([TarnsCustomImageView13 class], {
        "initWithFrameAndImages:imageOne:imageTwo:", "delegate", "setDelegate:", "imageState",
            "setImageState:", "drawRect:", "mouseDown:"
    });
    expectOperations([TarnsCustomKickButton10 class], {
        "initWithFrameAndImages:imageOne:imageTwo:andButtonType:", "setNewDelegate:", "mouseDown:",
            "mouseUp:"
    });
    expectOperations([TarnsCustomGroupButton13 class],
                     { "acceptsFirstMouse:", "mouseDown:", "mouseUp:", "drawRect:" });
    expectOperations([tarnsCustomWindow10 class],
                     { "editor", "setEditor:", "winPointerRef", "setWinPoinerRef:", "close" });
    EXPECT_FALSE([DetatchedView13 instancesRespondToSelector:@selector(setOwner:)]);
    EXPECT_FALSE([tarnsCustomWindow10 instancesRespondToSelector:@selector(setWinPointerRef:)]);
}

TEST_F(Classes, ProtocolHoldsOneRequiredOperation) {
    const SEL told = @selector(knobUpdatedWithIndex:withValue:withObject:);
    EXPECT_NE(
        protocol_getMethodDescription(objc_getProtocol("FlatKnobProtocol"), told, YES, YES).name,
        nullptr);
    unsigned count = 0;
    std::free(
        protocol_copyMethodDescriptionList(objc_getProtocol("FlatKnobProtocol"), YES, YES, &count));
    EXPECT_EQ(count, 1u);
    for (const BOOL instance : {YES, NO}) {
        std::free(protocol_copyMethodDescriptionList(objc_getProtocol("FlatKnobProtocol"), NO,
                                                     instance, &count));
        EXPECT_EQ(count, 0u);
    }
}
