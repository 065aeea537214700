// The face that the macOS bundle's own code builds and draws.
#import "tests/bundle/views/MacViewTest.h"

#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/screen/ExpectedFace.h"
#include "tests/support/screen/SlapBack.h"

#include "plugin/vst2/EffectOpcodes.h"

#include <cstring>

namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;

class Face : public MacViewTest {};

ScreenPart linuxFace() {
    const TemporaryFolder folder;
    const std::string file = folder.file("face");
    const ProcessResult result = runProcess(TVDELAY_LINUX_FACE, {TVDELAY_PLUGIN_PATH, file});
    EXPECT_EQ(result.status, 0) << result.err;
    const std::string bytes = readFile(file);
    ScreenPart face;
    face.width = 344;
    face.height = 400;
    face.pixels.resize(static_cast<std::size_t>(face.width) *
                       static_cast<std::size_t>(face.height));
    if (bytes.size() != face.pixels.size() * sizeof(Pixel)) {
        throw std::runtime_error("the Linux bundle's face has another size");
    }
    std::memcpy(face.pixels.data(), bytes.data(), bytes.size());
    return face;
}

std::vector<std::string> placesIn(NSView* view) {
    std::vector<std::string> places;
    for (NSView* const each in [view subviews]) {
        places.push_back(object_getClassName(each) + (" " + describe([each frame])));
    }
    return places;
}

} // namespace

TEST_F(Face, HasItsNineControlsAtTheirPlacesOverTheBackground) {
    openIn(344, 400);
    EXPECT_STREQ(object_getClassName(root()), "TarnsUiView13");
    EXPECT_EQ(describe([root() frame]), "(0 0 344 400)");
    EXPECT_THAT(placesIn(root()),
                ElementsAre("DetatchedView13 (0 0 344 400)", "FlatKnob13 (60 202 48 48)",
                            "FlatKnob13 (239 202 48 48)", "FlatKnob13 (154 202 48 48)",
                            "FlatKnob13 (117 119 48 48)", "FlatKnob13 (192 119 48 48)",
                            "FlatKnob13 (75 37 48 48)", "FlatKnob13 (222 37 48 48)",
                            "TarnsCustomImageView13 (82 132 15 16)",
                            "TarnsCustomImageView13 (253 132 15 16)"));
    for (int knob = 1; knob <= 7; ++knob) {
        EXPECT_THAT(placesIn(control(knob)), ElementsAre("ControlPoint13 (0 0 48 48)"));
    }
    EXPECT_THAT(journalOf("add DetatchedView13"),
                ElementsAre("add DetatchedView13 positioned -1 relative to nothing"));
}

TEST_F(Face, StartsAtTheEffectsValues) {
    openIn(344, 400);
    const std::vector<int> steps = {6, 100, 20, 36, 64, 0, 50};
    for (int knob = 1; knob <= 7; ++knob) {
        EXPECT_NEAR([[control(knob) controlPoint] ReturnValue],
                    steps[static_cast<std::size_t>(knob - 1)], 1);
    }
    EXPECT_EQ([control(8) imageState], 0);
    EXPECT_EQ([control(9) imageState], 0);
    EXPECT_THAT(takeWrites(), ElementsAre());
}

TEST_F(Face, LooksLikeThePictures) {
    openIn(344, 400);
    EXPECT_TRUE(showsFace(picture(), kSlapBack));
}

TEST_F(Face, LooksPixelByPixelLikeThatOfTheLinuxBundle) {
    openIn(344, 400);
    constexpr int kRounding = 2; // of two ways to halve a picture
    const FaceDifference difference = differenceOf(picture(), linuxFace());
    EXPECT_LE(difference.largest, kRounding);
    EXPECT_LE(difference.mean, 0.5);
}

TEST_F(Face, GivesEachKnobAClearLayerWithRoundCorners) {
    openIn(344, 400);
    EXPECT_THAT(journalOf("FlatKnob13 wants"), testing::SizeIs(7));
    EXPECT_THAT(journalOf("FlatKnob13 wants"), Each("FlatKnob13 wants layer 1"));
    EXPECT_THAT(journalOf("layer corner"), testing::SizeIs(7));
    EXPECT_THAT(journalOf("layer corner"), Each("layer corner radius 15"));
    EXPECT_THAT(journalOf("layer background"), testing::SizeIs(7));
    EXPECT_THAT(journalOf("layer background"), Each(testing::EndsWith(" 0")));
}

TEST_F(Face, CopiesItsPicturesAndLaysTheSwitchesOver) {
    openIn(344, 400);
    forgetJournal();
    for (int order = 0; order <= 9; ++order) {
        [control(order) lockFocus];
        [control(order) drawRect:NSMakeRect(0, 0, 10, 12)];
        [control(order) unlockFocus];
        const std::string operation = order >= 8 ? "2" : "1";
        EXPECT_THAT(
            journalOf("image (0 0 10 12)"),
            Contains("image (0 0 10 12) from (0 0 0 0) operation " + operation + " fraction 1"));
        forgetJournal();
    }
}

TEST_F(Face, FitsTheHostsWindowAndTellsItsSize) {
    openIn(500, 500);
    ERect* rect = nullptr;
    effect()->dispatcher(effect(), effEditGetRect, 0, 0, &rect, 0.0f);
    EXPECT_EQ(rect->top, 0);
    EXPECT_EQ(rect->left, 0);
    EXPECT_EQ(rect->bottom, 400);
    EXPECT_EQ(rect->right, 344);
    EXPECT_THAT(journalOf("set frame"),
                ElementsAre("set frame (50 50 344 400) display 1 animate 1"));
}

TEST_F(Face, StaysWhereItIsWhenTheEditorCloses) {
    openIn(344, 400);
    close();
    EXPECT_EQ([[[window() contentView] subviews] count], 1u);
}

TEST_F(Face, OpensWithoutAPlaceToBeShown) {
    openAt(nullptr);
    effect()->setParameter(effect(), 6, 1.0f);
}
