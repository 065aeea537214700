// The walls between the folders: who may include whom.
#include "tests/layers/LayerCheck.h"
#include "tests/layers/LayerTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// The folders at the root that the table speaks of.
std::vector<std::string> foldersWithRows() {
    std::set<std::string> folders;
    for (const Layer& row : layerTable()) {
        folders.insert(row.place.substr(0, row.place.find('/')));
    }
    return {folders.begin(), folders.end()};
}

const std::vector<Source>& sources() {
    static const auto* const all =
        new std::vector<Source>(readSources(TVDELAY_SOURCE_FOLDER, foldersWithRows()));
    return *all;
}

std::vector<std::string> brokenBy(const std::string& path, const std::string& line) {
    return wallsBroken({{path, "// A new file.\n" + line + "\n"}}, layerTable());
}

TEST(Layers, NothingIncludesWhatItsRowKeepsOut) {
    ASSERT_GT(sources().size(), 300u);
    EXPECT_THAT(wallsBroken(sources(), layerTable()), IsEmpty());
}

TEST(Layers, EveryDoorIsUsed) {
    EXPECT_THAT(doorsUnused(sources(), layerTable()), IsEmpty());
}

TEST(Layers, EveryFolderOfSourcesHasARow) {
    const std::vector<std::string> folders = foldersWithRows();
    for (const auto& entry : std::filesystem::directory_iterator(TVDELAY_SOURCE_FOLDER)) {
        const std::string name = entry.path().filename().string();
        if (entry.is_directory() && name != "build" && name[0] != '.' &&
            std::find(folders.begin(), folders.end(), name) == folders.end()) {
            EXPECT_TRUE(readSources(TVDELAY_SOURCE_FOLDER, {name}).empty()) << name;
        }
    }
}

TEST(Layers, EveryRowHasAReasonAndAPlaceThatIsThere) {
    for (const Layer& row : layerTable()) {
        EXPECT_THAT(row.why, testing::EndsWith(".")) << row.place;
        EXPECT_TRUE(std::filesystem::exists(std::string(TVDELAY_SOURCE_FOLDER) + "/" + row.place))
            << row.place;
    }
}

TEST(Layers, KeepTheEffectOutOfTheHost) {
    EXPECT_THAT(brokenBy("host/render/New.cpp", "#include \"effect/VstXSynth.h\""),
                ElementsAre(HasSubstr("host/render/New.cpp includes effect/VstXSynth.h")));
    EXPECT_THAT(brokenBy("host/render/New.cpp", "  #  include \"plugin/AudioEffect.h\""),
                Not(IsEmpty()));
    EXPECT_THAT(brokenBy("host/plugin/New.cpp", "#include \"plugin/vst2/AEffect.h\""), IsEmpty());
}

TEST(Layers, KeepThePlatformOnTheGround) {
    for (const char* const header :
         {"editor/EditorGeometry.h", "editor/hosting/EditorHosting.h", "effect/ParameterIndex.h",
          "plugin/AudioEffect.h", "plugin/vst2/AEffect.h", "soundlib/ChorusUnit.h",
          "host/base/OutputFile.h"}) {
        EXPECT_THAT(brokenBy("platform/linux/New.mm", std::string("#import \"") + header + "\""),
                    Not(IsEmpty()))
            << header;
    }
}

TEST(Layers, KeepTheSoundLibraryByItself) {
    EXPECT_THAT(brokenBy("soundlib/New.cpp", "#include \"effect/LiveField.h\""), Not(IsEmpty()));
    EXPECT_THAT(brokenBy("soundlib/New.cpp", "#include <sndfile.hh>"), Not(IsEmpty()));
    EXPECT_THAT(brokenBy("soundlib/New.cpp", "#include <vector>"), IsEmpty());
}

TEST(Layers, LetOneFileOfTheEffectSeeTheEditor) {
    EXPECT_THAT(brokenBy("effect/Parameters.cpp", "#include \"editor/tveditor13.h\""),
                Not(IsEmpty()));
    EXPECT_THAT(brokenBy("effect/EditorLink.cpp", "#include \"editor/tveditor13.h\""), IsEmpty());
}

TEST(Layers, KeepTheWindowsSystemOutOfTheViews) {
    EXPECT_THAT(brokenBy("editor/New.mm", "#include <X11/Xlib.h>"), Not(IsEmpty()));
    EXPECT_THAT(brokenBy("editor/New.mm", "#import \"editor/hosting/linux/TarnsAppKit.h\""),
                Not(IsEmpty()));
}

TEST(Layers, KeepWhatIsOnlyForTestsOutOfTheProduct) {
    EXPECT_THAT(brokenBy("effect/New.cpp", "#include \"tests/support/Bits.h\""), Not(IsEmpty()));
    EXPECT_THAT(brokenBy("host/base/New.cpp", "#include <gtest/gtest.h>"), Not(IsEmpty()));
}

TEST(Layers, AskForNamesFromTheRoot) {
    EXPECT_THAT(brokenBy("effect/New.cpp", "#include \"VstXSynth.h\""),
                ElementsAre(HasSubstr("isn't named from the root")));
    EXPECT_THAT(brokenBy("effect/New.cpp", "#include \"../host/base/OutputFile.h\""),
                Not(IsEmpty()));
}

TEST(Layers, AskForARowOfEachPlace) {
    EXPECT_THAT(wallsBroken({{"elsewhere/New.cpp", ""}}, layerTable()),
                ElementsAre("elsewhere/New.cpp lies in a place without a row"));
}

TEST(Layers, TellOfADoorThatNobodyUses) {
    const std::vector<Layer> table = {{"one", {"other"}, {"X11"}, "One."},
                                      {"other", {}, {}, "Two."}};
    EXPECT_THAT(doorsUnused({{"one/A.cpp", "#include \"other/B.h\"\n"}}, table),
                ElementsAre("one may include X11, and nothing of it does"));
}

} // namespace
