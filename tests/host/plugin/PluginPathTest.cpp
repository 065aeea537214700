#include "host/plugin/PluginPath.h"

#include "host/base/UserError.h"
#include "host/plugin/PluginFolders.h"
#include "host/plugin/PluginModule.h"
#include "tests/host/TestPlugin.h"
#include "tests/host/Tvhost.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

namespace fs = std::filesystem;
using namespace tvhost;
using testing::HasSubstr;

namespace {

fs::path makeBundle(const fs::path& bundle, const std::string& plugin, const std::string& name) {
    const fs::path folder = bundle / "Contents" / "x86_64-linux";
    fs::create_directories(folder);
    fs::copy_file(testPlugin(plugin), folder / (name + ".so"));
    return folder / (name + ".so");
}

} // namespace

TEST(PluginPath, TakesAFileAsItStands) {
    EXPECT_EQ(pluginPath(testPlugin("Gain")), testPlugin("Gain"));
}

TEST(PluginPath, MakesRelativePathsWholeSoThatTheLoaderDoesNotSearch) {
    TemporaryFolder folder;
    fs::copy_file(testPlugin("Gain"), folder.path() / "Local.so");
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    EXPECT_EQ(pluginPath("Local.so"), folder.path() / "Local.so");
    fs::current_path(before);
}

TEST(PluginPath, FindsTheObjectInABundle) {
    TemporaryFolder folder;
    const fs::path object = makeBundle(folder.path() / "Any.vst", "Gain", "Other");
    EXPECT_EQ(pluginPath(folder.file("Any.vst")), object);
    EXPECT_EQ(pluginPath(folder.file("Any.vst/")), object);
}

TEST(PluginPath, PrefersTheObjectNamedAsTheBundle) {
    TemporaryFolder folder;
    makeBundle(folder.path() / "Twice.vst", "Gain", "A");
    const fs::path named = makeBundle(folder.path() / "Twice.vst", "Gain", "Twice");
    makeBundle(folder.path() / "Twice.vst", "Gain", "Z");
    EXPECT_EQ(pluginPath(folder.file("Twice.vst/")), named);
}

TEST(PluginPath, RefusesWhatIsMissingOrEmpty) {
    TemporaryFolder folder;
    EXPECT_THROW(pluginPath(folder.file("None.so")), UserError);
    EXPECT_THROW(pluginPath(folder.path().string()), UserError);
    fs::create_directories(folder.path() / "Mac.vst/Contents/MacOS");
    EXPECT_THROW(pluginPath(folder.file("Mac.vst")), UserError);
}

TEST(PluginPath, SearchesBesideTheProgramThenInTheListedThenTheUsualFolders) {
    setenv("VST_PATH", "/first::/second", 1);
    setenv("LXVST_PATH", "/third", 1);
    setenv("HOME", "/the/home", 1);
    const std::vector<fs::path> folders = pluginFolders();
    unsetenv("VST_PATH");
    unsetenv("LXVST_PATH");
    const std::vector<fs::path> expected = {fs::read_symlink("/proc/self/exe").parent_path(),
                                            "/first",
                                            "/second",
                                            "/third",
                                            "/the/home/.vst",
                                            "/the/home/.lxvst",
                                            "/usr/local/lib/vst",
                                            "/usr/local/lib/lxvst",
                                            "/usr/lib/vst",
                                            "/usr/lib/lxvst"};
    EXPECT_EQ(folders, expected);
}

// A tvhost that stands alone, so that nothing lies beside it but what the test puts there.
class DefaultPlugin : public testing::Test {
protected:
    DefaultPlugin() { fs::copy_file(TVHOST_PROGRAM, program()); }

    fs::path program() const { return folder.path() / "tvhost"; }
    ProcessResult info(const std::vector<std::string>& environment) const {
        Process::Options options;
        options.environment = {"VST_PATH", "HOME=/nonexistent"};
        options.environment.insert(options.environment.end(), environment.begin(),
                                   environment.end());
        return runProcess(program(), {"info"}, options);
    }

    TemporaryFolder folder;
};

TEST_F(DefaultPlugin, LiesBesideTheProgram) {
    const fs::path object = makeBundle(folder.path() / "TvDelay.vst", "Gain", "TvDelay");
    makeBundle(folder.path() / "other/TvDelay.vst", "Mono", "TvDelay");
    const ProcessResult result = info({"VST_PATH=" + folder.file("other")});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr(object.string()));
}

TEST_F(DefaultPlugin, IsTheFirstInVstPath) {
    fs::create_directory(folder.path() / "empty");
    const fs::path object = makeBundle(folder.path() / "one/TvDelay.vst", "Gain", "TvDelay");
    makeBundle(folder.path() / "two/TvDelay.vst", "Mono", "TvDelay");
    const ProcessResult result = info(
        {"VST_PATH=" + folder.file("empty") + ":" + folder.file("one") + ":" + folder.file("two")});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr(object.string()));
}

TEST_F(DefaultPlugin, IsInTheHomeFolder) {
    const fs::path object = makeBundle(folder.path() / "home/.vst/TvDelay.vst", "Gain", "TvDelay");
    const ProcessResult result = info({"HOME=" + folder.file("home")});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr(object.string()));
}

TEST_F(DefaultPlugin, IsMissedInOneLineThatNamesTheFoldersSearched) {
    const ProcessResult result = info({"VST_PATH=" + folder.file("nowhere")});
    if (fs::exists("/usr/local/lib/vst/TvDelay.vst") || fs::exists("/usr/lib/vst/TvDelay.vst")) {
        GTEST_SKIP() << "an installed TvDelay.vst is found";
    }
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    ASSERT_EQ(result.errorLines().size(), 1u) << result.err;
    EXPECT_THAT(result.err, HasSubstr("TvDelay.vst"));
    EXPECT_THAT(result.err, HasSubstr(folder.file("nowhere")));
}

class NamedPlugin : public DefaultPlugin {
protected:
    fs::path add(const std::string& plugin, const std::string& to) const {
        const fs::path file = folder.path() / to;
        fs::create_directories(file.parent_path());
        fs::copy_file(testPlugin(plugin), file);
        return file;
    }
    ProcessResult info(const std::string& name) const {
        Process::Options options;
        options.environment = {"DISPLAY", "HOME=/nonexistent", "LXVST_PATH",
                               "VST_PATH=" + folder.file("one") + ":" + folder.file("two")};
        return runProcess(program(), {"info", name}, options);
    }
    void expectFound(const std::string& name, const fs::path& file) const {
        SCOPED_TRACE(name);
        const ProcessResult result = info(name);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_THAT(result.out, HasSubstr(file.string() + "\n"));
    }
};

TEST_F(NamedPlugin, IsTheFirstFileOrBundleOfThatNameWithoutCase) {
    const fs::path first = add("Mono", "one/sub/Quiet Thing.so");
    add("Gain", "two/Quiet Thing.so");
    const fs::path object = makeBundle(folder.path() / "two/Bundled.vst", "Mono", "inner");
    expectFound("quiet thing", first);
    expectFound("Quiet Thing.so", first);
    expectFound("BUNDLED", object);
    expectFound("Bundled.vst", object);
    expectFound("inner", object);
}

TEST_F(NamedPlugin, IsElseWhatCallsItselfSo) {
    add("Unborn", "one/Crash.so");
    const fs::path gain = add("Gain", "two/libunlike.so");
    expectFound("gain", gain);
}

TEST_F(NamedPlugin, MayLieTwiceButMustNotStandForTwo) {
    const fs::path first = add("Gain", "one/a.so");
    add("Gain", "two/b.so");
    expectFound("Gain", first);
    add("OtherGain", "two/c.so");
    const ProcessResult result = info("Gain");
    EXPECT_EQ(result.status, 2);
    ASSERT_EQ(result.errorLines().size(), 1u) << result.err;
    EXPECT_THAT(result.err, HasSubstr("one/a.so and "));
    EXPECT_THAT(result.err, HasSubstr("two/c.so"));
}

TEST_F(NamedPlugin, IsMissedInOneLineThatNamesTheFoldersSearched) {
    const ProcessResult result = info("Nothing of the Kind");
    EXPECT_EQ(result.status, 2);
    ASSERT_EQ(result.errorLines().size(), 1u) << result.err;
    EXPECT_THAT(result.err, HasSubstr("no plug-in Nothing of the Kind"));
    EXPECT_THAT(result.err, HasSubstr(folder.file("two")));
    EXPECT_THAT(result.err, HasSubstr("tvhost list"));
}

TEST(PluginModule, RefusesWhatCannotBeLoaded) {
    TemporaryFolder folder;
    writeFile(folder.file("text.so"), "not a shared object");
    EXPECT_THROW(PluginModule(folder.file("text.so")), UserError);
    EXPECT_THROW(PluginModule(folder.file("missing.so")), UserError);
    EXPECT_THROW(PluginModule(testPlugin("NoEntry")), UserError);
}
