#include "tests/resources/ControlPlaces.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/screen/Picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>

namespace {

namespace fs = std::filesystem;

class PictureScripts : public testing::Test {
protected:
    // Runs a script of resources/art and returns its exit status; what it says on standard error
    // goes to errors_.
    int run(const std::string& script, const std::string& arguments) {
        const ProcessResult result = runShell(
            "'" TVDELAY_PYTHON "' '" TVDELAY_RESOURCES_DIR "/art/" + script + "' " + arguments);
        errors = result.err;
        return result.status;
    }

    void expectOneLineOfComplaint() const {
        EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
        EXPECT_EQ(errors.find("Traceback"), std::string::npos) << errors;
    }

    std::string quoted(const std::string& name) const { return "'" + folder.file(name) + "'"; }

    TemporaryFolder folder;
    std::string errors;
};

} // namespace

TEST_F(PictureScripts, DrawThePicturesThatStandInTheFolder) {
    ASSERT_EQ(run("make_pictures.py", quoted("")), 0) << errors;
    int pictures = 0;
    for (const auto& entry : fs::directory_iterator(TVDELAY_RESOURCES_DIR)) {
        if (entry.path().extension() != ".png") {
            continue;
        }
        ++pictures;
        const std::string name = entry.path().filename().string();
        const Picture kept = Picture::load(entry.path().string());
        const Picture drawn = Picture::load(folder.file(name));
        ASSERT_EQ(kept.width(), drawn.width()) << name;
        ASSERT_EQ(kept.height(), drawn.height()) << name;
        // Releases of the font renderer may differ in how they round an edge.
        int different = 0;
        for (int row = 0; row < kept.height(); ++row) {
            for (int column = 0; column < kept.width(); ++column) {
                different += difference(kept.at(column, row), drawn.at(column, row)) > 8 ? 1 : 0;
            }
        }
        EXPECT_LE(different, kept.width() * kept.height() / 1000) << name;
    }
    const auto made =
        std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator());
    EXPECT_EQ(made, pictures);
}

TEST_F(PictureScripts, RefuseAFolderThatIsNotThere) {
    EXPECT_EQ(run("make_pictures.py", quoted("missing")), 2);
    expectOneLineOfComplaint();
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST_F(PictureScripts, RefuseASecondFolder) {
    EXPECT_EQ(run("make_pictures.py", quoted("") + " " + quoted("")), 2);
    expectOneLineOfComplaint();
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST_F(PictureScripts, ComposeTheEditorFromTheFramesOfItsValues) {
    ASSERT_EQ(
        run("compose_editor.py", quoted("editor.png") + " --values 0,0.03,0.04,0.5,1,0,0.99,1,0.5"),
        0)
        << errors;
    const Picture editor = Picture::load(folder.file("editor.png"));
    ASSERT_EQ(editor.width(), 2 * kFaceWidth);
    ASSERT_EQ(editor.height(), 2 * kFaceHeight);
    const struct {
        ControlPlace place;
        const char* picture;
    } shown[] = {
        {kKnobPlaces[0], "fxknob0"},     {kKnobPlaces[1], "fxknob63"},
        {kKnobPlaces[2], "fxknob3"},     {kKnobPlaces[3], "fxknob5"},
        {kKnobPlaces[4], "fxknob63"},    {kKnobPlaces[5], "fxknob127"},
        {kKnobPlaces[6], "fxknob125"},   {kSwitchPlaces[0], "switchon"},
        {kSwitchPlaces[1], "switchoff"},
    };
    for (const auto& control : shown) {
        const Picture picture = Picture::load(picturePath(control.picture));
        const int left = 2 * control.place.left;
        const int top = 2 * (kFaceHeight - control.place.bottom - control.place.height);
        for (int row = 0; row < picture.height(); ++row) {
            for (int column = 0; column < picture.width(); ++column) {
                const Pixel& pixel = picture.at(column, row);
                if (pixel.alpha == 255) {
                    ASSERT_EQ(difference(editor.at(left + column, top + row), pixel), 0)
                        << control.place.name << " at " << column << ", " << row;
                }
            }
        }
    }
}

TEST_F(PictureScripts, ComposeAtOnePixelAPoint) {
    ASSERT_EQ(run("compose_editor.py", quoted("editor.png") + " --scale 1"), 0) << errors;
    const Picture editor = Picture::load(folder.file("editor.png"));
    EXPECT_EQ(editor.width(), kFaceWidth);
    EXPECT_EQ(editor.height(), kFaceHeight);
    EXPECT_EQ(editor.pixelsPerMetre(), 2835U);
}

TEST_F(PictureScripts, ComposingRefusesBadArgumentsAndWritesNothing) {
    for (const std::string& arguments :
         {std::string(""), quoted("editor.png") + " --values 1,2",
          quoted("editor.png") + " --values 0,0,0,0,0,0,0,0,1.5",
          quoted("editor.png") + " --values 0,0,0,0,0,0,0,0,nan",
          quoted("editor.png") + " --scale 3", quoted("editor.gif"), quoted("missing/editor.png"),
          quoted("editor.png") + " --pictures " + quoted("missing")}) {
        EXPECT_EQ(run("compose_editor.py", arguments), 2) << arguments;
        expectOneLineOfComplaint();
        EXPECT_TRUE(fs::is_empty(folder.path())) << arguments;
    }
}
