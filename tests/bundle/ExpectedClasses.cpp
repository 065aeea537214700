#include "tests/bundle/ExpectedClasses.h"

namespace {

const char* const kInitWithFrame = "@@:{CGRect}";
const char* const kDraw = "v@:{CGRect}";
const char* const kSetObject = "v@:@";
const char* const kObject = "@@:";
const char* const kSetInt = "v@:i";
const char* const kInt = "i@:";
const char* const kSetUnsigned = "v@:I";
const char* const kUnsigned = "I@:";
const char* const kAction = "v@:";

const ObjcClass kTarnsUiView13 = {"TarnsUiView13",
                                  "NSView",
                                  {},
                                  {{"BackgroundImage", "@\"NSImage\""},
                                   {"KnobView", "@\"KnobDelegate13\""},
                                   {"mAU", "^{ComponentInstanceRecord}"},
                                   {"mAUEventListener", "^{AUListenerBase}"},
                                   {"BkView", "@\"NSView\""},
                                   {"_volumeSliderText", "@\"sTextView13\""},
                                   {"_subDetachedView", "@\"DetatchedView13\""},
                                   {"_volumeSliderVal", "i"},
                                   {"_panningSliderVal", "i"},
                                   {"_effect", "^{AudioEffect}"}},
                                  {{"initWithFrame:andEffect:", "@@:{CGRect}^{AudioEffect}"},
                                   {"awakeFromNib", kAction},
                                   {"getEffect", "^{AudioEffect}@:"},
                                   {"setEffect:", "v@:^{AudioEffect}"},
                                   {"updateParameters:withValue:", "v@:if"},
                                   {"updateView:andValue:", "v@:if"},
                                   {"subDetachedView", kObject},
                                   {"setSubDetachedView:", kSetObject},
                                   {"volumeSliderText", kObject},
                                   {"setVolumeSliderText:", kSetObject},
                                   {"volumeSliderVal", kInt},
                                   {"setVolumeSliderVal:", kSetInt},
                                   {"panningSliderVal", kInt}}};

const ObjcClass kKnobDelegate13 = {"KnobDelegate13",
                                   "NSObject",
                                   {"NSApplicationDelegate", "FlatKnobProtocol"},
                                   {{"MainView", "@\"TarnsUiView13\""},
                                    {"timeKnob", "@\"FlatKnob13\""},
                                    {"mixKnob", "@\"FlatKnob13\""},
                                    {"feedBackKnob", "@\"FlatKnob13\""},
                                    {"lowPassKnob", "@\"FlatKnob13\""},
                                    {"highPassKnob", "@\"FlatKnob13\""},
                                    {"panWidthKnob", "@\"FlatKnob13\""},
                                    {"panKnob", "@\"FlatKnob13\""},
                                    {"lowPassSwitch", "@\"TarnsCustomImageView13\""},
                                    {"highPassSwitch", "@\"TarnsCustomImageView13\""},
                                    {"sliderBackground", "@\"NSImage\""},
                                    {"sliderKnob", "@\"NSImage\""}},
                                   {{"initWithView:", "@@:@"},
                                    {"createSubView", kAction},
                                    {"createKnobs", kAction},
                                    {"createSwitches", kAction},
                                    {"knobUpdatedWithIndex:withValue:withObject:", "v@:i@@"},
                                    {"updateControllers:andValue:", "v@:if"},
                                    {"generateArrayFrom:to:", "@@:ii"},
                                    {"fillArray:", kSetObject},
                                    {"createLabelWithFrame:", kInitWithFrame},
                                    {"colorFromHexString:", "@@:@"},
                                    {"createKnob", kAction},
                                    {"creatSliders", kAction},
                                    {"applicationDidFinishLaunching:", kSetObject}}};

const ObjcClass kDetatchedView13 = {
    "DetatchedView13",
    "NSView",
    {},
    {{"BackgroundImage", "@\"NSImage\""}, {"_Owner", "@\"TarnsUiView13\""}},
    {{"initWithImage2:withRect:", "@@:@{CGRect}"},
     {"Owner", kObject},
     {"setOwnder:", kSetObject},
     {"awakeFromNib", kAction},
     {"drawRect:", kDraw}}};

const ObjcClass kControlPoint13 = {
    "ControlPoint13",
    "NSView",
    {},
    {{"_currentDraggedAngle", "f"},
     {"_currentAngle", "i"},
     {"_mouseDownPosition", "i"},
     {"_previousValue", "i"},
     {"_value", "i"},
     {"_insets", "i"},
     {"_controlPointDiameter", "i"},
     {"_controlPointColor", "@\"NSColor\""},
     {"_data", "@\"NSArray\""},
     {"_delegate", "@\"<FlatKnobProtocol>\""}},
    {{"initWithFrame:withInsets:withControlPointDiameter:withControlPointColor:withPosition:",
      "@@:{CGRect}ii@i"},
     {"ReturnValue", kInt},
     {"value", kInt},
     {"setIntValue:", kSetInt},
     {"setValue:", kSetInt},
     {"updateWithYcoord:", kSetObject},
     {"makeRectWithWidth:", "{CGRect}@:i"},
     {"mouseDown:", kSetObject},
     {"mouseUp:", kSetObject},
     {"mouseDragged:", kSetObject},
     {"drawRect:", kDraw},
     {"acceptsFirstMouse:", "c@:@"},
     {"mouseDownCanMoveWindow", "c@:"},
     {"currentDraggedAngle", "f@:"},
     {"setCurrentDraggedAngle:", "v@:f"},
     {"currentAngle", kInt},
     {"setCurrentAngle:", kSetInt},
     {"mouseDownPosition", kInt},
     {"setMouseDownPosition:", kSetInt},
     {"previousValue", kInt},
     {"setPreviousValue:", kSetInt},
     {"insets", kInt},
     {"setInsets:", kSetInt},
     {"controlPointDiameter", kInt},
     {"setControlPointDiameter:", kSetInt},
     {"controlPointColor", kObject},
     {"setControlPointColor:", kSetObject},
     {"data", kObject},
     {"setData:", kSetObject},
     {"delegate", kObject},
     {"setDelegate:", kSetObject}}};

const ObjcClass kFlatKnob13 = {
    "FlatKnob13",
    "NSView",
    {},
    {{"_insets", "i"},
     {"_backgroundColor", "@\"NSColor\""},
     {"_knobColor", "@\"NSColor\""},
     {"_BackgroundImage", "@\"NSImage\""},
     {"_animationImages", "@\"NSMutableArray\""},
     {"_control", "i"},
     {"_controlPoint", "@\"ControlPoint13\""}},
    {{"initWithFrame:withInsets:withControlPointDiameter:withControlPointColor:withKnobColor:"
      "withBackgroundColor:pointerToArray:",
      "@@:{CGRect}ii@@@@"},
     {"drawRect:", kDraw},
     {"control", kInt},
     {"setControl:", kSetInt},
     {"controlPoint", kObject},
     {"setControlPoint:", kSetObject}}};

const ObjcClass kTarnsCustomImageView13 = {
    "TarnsCustomImageView13",
    "NSImageView",
    {},
    {{"_delegate", "@"},
     {"state1Image", "@\"NSImage\""},
     {"state2Image", "@\"NSImage\""},
     {"_imageState", "c"}},
    {{"initWithFrameAndImages:imageOne:imageTwo:", "@@:{CGRect}@@"},
     {"delegate", kObject},
     {"setDelegate:", kSetObject},
     {"imageState", "c@:"},
     {"setImageState:", "v@:c"},
     {"drawRect:", kDraw},
     {"mouseDown:", kSetObject}}};

const ObjcClass kTarnsCustomKickButton10 = {
    "TarnsCustomKickButton10",
    "TarnsCustomImageView13",
    {},
    {{"_buttonType", "i"}},
    {{"initWithFrameAndImages:imageOne:imageTwo:andButtonType:", "@@:{CGRect}@@i"},
     {"setNewDelegate:", kSetObject},
     {"mouseDown:", kSetObject},
     {"mouseUp:", kSetObject}}};

const ObjcClass kTarnsCustomGroupButton13 = {"TarnsCustomGroupButton13",
                                             "TarnsCustomKickButton10",
                                             {},
                                             {},
                                             {{"acceptsFirstMouse:", "c@:@"},
                                              {"drawRect:", kDraw},
                                              {"mouseDown:", kSetObject},
                                              {"mouseUp:", kSetObject}}};

const ObjcClass kTarnsCustomSlider13 = {
    "TarnsCustomSlider13",
    "NSSlider",
    {},
    {{"_delegate", "@"}, {"_caseValue", "i"}},
    {{"initWithFrameandImage:backgroundImage:knobImage:", "@@:{CGRect}@@"},
     {"delegate", kObject},
     {"setDelegate:", kSetObject},
     {"caseValue", kInt},
     {"setCaseValue:", kSetInt},
     {"drawRect:", kDraw},
     {"awakeFromNib", kAction}}};

const ObjcClass kTarnsCustomSliderCell10 = {"TarnsCustomSliderCell10",
                                            "NSSliderCell",
                                            {},
                                            {{"backgroundImage", "@\"NSImage\""},
                                             {"knobImage", "@\"NSImage\""},
                                             {"_sliderCellWidth", "i"},
                                             {"_sliderCellHeight", "i"}},
                                            {{"init", kObject},
                                             {"initWithImage:knobImage:", "@@:@@"},
                                             {"SliderCellWidth", kInt},
                                             {"setSliderCellWidth:", kSetInt},
                                             {"SliderCellHeight", kInt},
                                             {"setSliderCellHeight:", kSetInt},
                                             {"drawBarInside:flipped:", "v@:{CGRect}c"},
                                             {"drawKnob:", kDraw}}};

const ObjcClass kSTextView13 = {"sTextView13",
                                "NSView",
                                {},
                                {{"tColor", "@\"NSColor\""}, {"_owner", "@\"TarnsUiView13\""}},
                                {{"initWithFrame:", kInitWithFrame},
                                 {"owner", kObject},
                                 {"setOwner:", kSetObject},
                                 {"drawRect:", kDraw},
                                 {"awakeFromNib", kAction}}};

const ObjcClass kTarnsCustomDisplayView10 = {
    "TarnsCustomDisplayView10",
    "NSView",
    {},
    {{"_sValue", "i"}, {"_displayDictionary", "@\"NSDictionary\""}},
    {{"initWithFrame:andValue:", "@@:{CGRect}i"},
     {"SValue", kInt},
     {"setSValue:", kSetInt},
     {"drawRect:", kDraw}}};

const ObjcClass kLWindowView9 = {"lWindowView9",
                                 "NSView",
                                 {},
                                 {{"BackgroundImage", "@\"NSImage\""},
                                  {"_TotalSamples", "I"},
                                  {"_currentSamples", "I"},
                                  {"_SampleMessage", "@\"NSString\""},
                                  {"_SampleMessageBack", "@\"NSString\""}},
                                 {{"initWithImage:andFrame:", "@@:@{CGRect}"},
                                  {"drawRect:", kDraw},
                                  {"TotalSamples", kUnsigned},
                                  {"setTotalSamples:", kSetUnsigned},
                                  {"currentSamples", kUnsigned},
                                  {"setcurrentSamples:", kSetUnsigned},
                                  {"SampleMessage", kObject},
                                  {"setSampleMessage:", kSetObject},
                                  {"SamplemessageBack", kObject},
                                  {"setSampleMessageBack:", kSetObject}}};

const ObjcClass kTarnsView10 = {
    "TarnsView10",
    "NSObject",
    {"AUCocoaUIBase"},
    {{"tarnsUiView13", "@"}},
    {{"interfaceVersion", kUnsigned},
     {"description", kObject},
     {"uiViewForAudioUnit:withSize:", "@@:^{ComponentInstanceRecord}{CGSize}"}}};

const ObjcClass kTarnsCustomWindow10 = {"tarnsCustomWindow10",
                                        "NSWindow",
                                        {},
                                        {{"_editor", "^{tveditor13}"}, {"_winPointerRef", "^v"}},
                                        {{"close", kAction},
                                         {"editor", "^{tveditor13}@:"},
                                         {"setEditor:", "v@:^{tveditor13}"},
                                         {"winPointerRef", "^v@:"},
                                         {"setWinPoinerRef:", "v@:^v"}}};

} // namespace

const std::vector<ObjcClass>& expectedClasses() {
    static const std::vector<ObjcClass> classes = {kTarnsUiView13,
                                                   kKnobDelegate13,
                                                   kDetatchedView13,
                                                   kControlPoint13,
                                                   kFlatKnob13,
                                                   kTarnsCustomImageView13,
                                                   kTarnsCustomKickButton10,
                                                   kTarnsCustomGroupButton13,
                                                   kTarnsCustomSlider13,
                                                   kTarnsCustomSliderCell10,
                                                   kSTextView13,
                                                   kTarnsCustomDisplayView10,
                                                   kLWindowView9,
                                                   kTarnsView10,
                                                   kTarnsCustomWindow10};
    return classes;
}

const std::set<std::string>& helperSelectors() {
    static const std::set<std::string> selectors = {
        "heightOfEvent:", "knobAt:withImages:", "knobOf:",  "progress",
        "sendKnob:at:",   "sendSwitch:at:",     "switchOf:"};
    return selectors;
}
