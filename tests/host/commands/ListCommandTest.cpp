#include "tests/host/TestPlugin.h"
#include "tests/host/Tvhost.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace fs = std::filesystem;
using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

class List : public testing::Test {
protected:
    fs::path add(const std::string& plugin, const std::string& to) {
        const fs::path file = folder.path() / to;
        fs::create_directories(file.parent_path());
        fs::copy_file(testPlugin(plugin), file);
        return file;
    }

    json listOf(const std::vector<std::string>& arguments,
                const std::vector<std::string>& environment = {}) const {
        std::vector<std::string> words = {"list", "--json"};
        words.insert(words.end(), arguments.begin(), arguments.end());
        Process::Options options;
        options.environment = environment;
        const ProcessResult result = runTvhost(words, options);
        EXPECT_EQ(result.status, 0);
        return json::parse(result.out);
    }
    std::vector<std::string> filesOf(const json& list) const {
        std::vector<std::string> files;
        for (const json& entry : list) {
            const std::string file = entry.at("file");
            if (file.rfind(folder.path().string(), 0) == 0) {
                files.push_back(file.substr(folder.path().string().size() + 1));
            }
        }
        return files;
    }
    static std::string faultOf(const json& list, const std::string& file) {
        for (const json& entry : list) {
            if (entry.at("file") == file) {
                return entry.value("fault", "none");
            }
        }
        return "not listed";
    }

    TemporaryFolder folder;
};

} // namespace

TEST_F(List, ShowsWhatEachPluginIsInOrderOfTheNames) {
    add("Surround", "b.so");
    add("Gain", "c.so");
    add("Instrument", "a.so");
    const ProcessResult result = runTvhost({"list", folder.path().string()});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "Plug-ins (3)\n"
                          "  name  maker    kind        in  out  file\n"
                          "  a     -        instrument   0    2  " +
                              folder.file("a.so") +
                              "\n"
                              "  b     -        effect       6    6  " +
                              folder.file("b.so") +
                              "\n"
                              "  Gain  Testers  effect       2    2  " +
                              folder.file("c.so") + "\n");
}

TEST_F(List, TellsAllInJson) {
    const fs::path file = add("Gain", "Gain.so");
    const json expected = {{{"file", file},
                            {"name", "Gain"},
                            {"vendorName", "Testers"},
                            {"kind", "effect"},
                            {"uniqueId", "Tst1"},
                            {"inputs", 2},
                            {"outputs", 2},
                            {"hasEditor", false}}};
    EXPECT_EQ(listOf({folder.path().string()}), expected);
}

TEST_F(List, SaysWhatIsWrongAndGoesOn) {
    const fs::path crash = add("Unborn", "Crash.so");
    const fs::path hang = add("Unborn", "Hang.so");
    const fs::path thrower = add("Unborn", "Throw.so");
    const fs::path quit = add("Unborn", "Quit.so");
    const fs::path null = add("Null", "Null.so");
    const fs::path good = add("Gain", "Zuletzt.so");
    const json list = listOf({folder.path().string(), "--time-limit", "1.5"});
    EXPECT_EQ(list.size(), 6u);
    EXPECT_THAT(faultOf(list, crash), HasSubstr("crashed (Aborted)"));
    EXPECT_EQ(faultOf(list, hang), "gave no answer in time");
    EXPECT_EQ(faultOf(list, thrower), "no licence");
    EXPECT_THAT(faultOf(list, quit), HasSubstr("ended the program that asked it, with status 3"));
    EXPECT_THAT(faultOf(list, null), HasSubstr("returned null"));
    EXPECT_EQ(faultOf(list, good), "none");

    const ProcessResult text = runTvhost({"list", folder.path().string(), "--time-limit", "1.5"});
    EXPECT_EQ(text.status, 0);
    EXPECT_EQ(text.err, "");
    EXPECT_THAT(text.out, HasSubstr("Plug-ins (1)\n"));
    EXPECT_THAT(text.out, HasSubstr("Not usable (5)\n"));
    EXPECT_THAT(text.out, Not(HasSubstr("Hello from the plug-in")));
}

TEST_F(List, ShowsAPluginThatCrashesAsItIsClosed) {
    const fs::path file = add("Meddling", "crashing.so");
    const json list = listOf({folder.path().string()}, {"MEDDLE=crash"});
    EXPECT_EQ(faultOf(list, file), "none");
}

TEST_F(List, LeavesOutWhatIsNoPlugin) {
    add("NoEntry", "library.so");
    writeFile(folder.file("readme.txt"), "hello");
    add("Gain", "Gain.so");
    EXPECT_THAT(filesOf(listOf({folder.path().string()})), ElementsAre("Gain.so"));
}

TEST_F(List, FindsBundlesAndSubfoldersOnceAndNoOtherInterfaces) {
    add("Gain", "maker/deep/Gain.so");
    add("Gain", "Bundle.vst/Contents/x86_64-linux/Bundle.so");
    add("Gain", "Bundle.vst/Contents/Resources/helper.so");
    add("Gain", "Other.vst3/Contents/x86_64-linux/Other.so");
    add("Gain", "Other.lv2/Other.so");
    fs::create_symlink(folder.path() / "maker", folder.path() / "again");
    fs::create_symlink(folder.path(), folder.path() / "maker/circle");
    std::vector<std::string> files = filesOf(listOf({folder.path().string()}));
    std::sort(files.begin(), files.end());
    EXPECT_THAT(files,
                ElementsAre("Bundle.vst/Contents/x86_64-linux/Bundle.so", "again/deep/Gain.so"));
}

TEST_F(List, LooksInTheFoldersThatHostsRead) {
    add("Gain", "one/a.so");
    add("Gain", "two/b.so");
    add("Gain", "three/c.so");
    add("Gain", "home/.vst/d.so");
    add("Gain", "home/.lxvst/e.so");
    add("Gain", "unlisted/f.so");
    std::vector<std::string> files =
        filesOf(listOf({}, {"VST_PATH=" + folder.file("one") + ":" + folder.file("two"),
                            "LXVST_PATH=" + folder.file("three"), "HOME=" + folder.file("home")}));
    std::sort(files.begin(), files.end());
    EXPECT_THAT(files, ElementsAre("home/.lxvst/e.so", "home/.vst/d.so", "one/a.so", "three/c.so",
                                   "two/b.so"));
}

TEST_F(List, WarnsWhereThereIsNone) {
    const ProcessResult result = runTvhost({"list", folder.path().string()});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "Plug-ins (0)\n");
    EXPECT_EQ(result.err,
              "tvhost: warning: there are no VST 2 plug-ins in " + folder.path().string() + "\n");
}
