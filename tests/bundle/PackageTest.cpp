// The archives of a release, and the script that installs a bundle.
#include "tests/bundle/Archive.h"
#include "tests/bundle/MacBundle.h"
#include "tests/support/LoadedPlugin.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include "plugin/vst2/EffectOpcodes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const std::string kPackage = TVDELAY_SOURCE_FOLDER "/packaging/package.sh";
const std::string kInstall = TVDELAY_SOURCE_FOLDER "/packaging/install.sh";
const std::string kNoHome = "/nonexistent";
const std::string kLinuxBundle = TVDELAY_LINUX_BUNDLE;
constexpr std::int64_t kTime = 1577836800; // of every file in the archives

std::string version() {
    const std::string text = readFile(TVDELAY_SOURCE_FOLDER "/VERSION");
    return text.substr(0, text.find('\n'));
}

std::string linuxName() {
    return "TvDelay-" + version() + "-linux-x86_64";
}

std::string macName() {
    return "TvDelay-" + version() + "-macos-x86_64";
}

// A script of packaging/; `home` becomes HOME.
ProcessResult runScript(const std::string& script, const std::vector<std::string>& arguments,
                        const std::string& home) {
    Process::Options options;
    options.environment = {"HOME=" + home};
    return runProcess(script, arguments, options);
}

void package(const std::string& linuxBundle, const std::string& macosBundle,
             const std::string& folder) {
    const ProcessResult result = runScript(kPackage, {linuxBundle, macosBundle, folder}, kNoHome);
    ASSERT_EQ(result.status, 0) << result.err;
}

// The archives of the built bundles, made once.
class Package : public testing::Test {
protected:
    static void SetUpTestSuite() {
        folder = new TemporaryFolder;
        package(kLinuxBundle, macBundle(), folder->path());
    }
    static void TearDownTestSuite() {
        delete folder;
        folder = nullptr;
    }

    static std::string linuxArchive() { return folder->file(linuxName() + ".tar.gz"); }
    static std::string macArchive() { return folder->file(macName() + ".zip"); }

    static TemporaryFolder* folder;
};

TemporaryFolder* Package::folder = nullptr;

// By the path below the archive's one folder.
std::map<std::string, ArchiveEntry> filesIn(const std::string& archive, const std::string& folder) {
    std::map<std::string, ArchiveEntry> files;
    for (const ArchiveEntry& entry : readArchive(archive)) {
        EXPECT_EQ(entry.path.rfind(folder + "/", 0), 0u) << entry.path;
        if (!entry.isFolder) {
            files[entry.path.substr(folder.size() + 1)] = entry;
        }
    }
    return files;
}

void expectTheBundle(const std::map<std::string, ArchiveEntry>& files, const std::string& bundle,
                     const std::string& executable) {
    std::size_t found = 0;
    for (const auto& entry : fs::recursive_directory_iterator(bundle)) {
        if (entry.is_directory()) {
            continue;
        }
        const std::string name = fs::relative(entry.path(), bundle);
        const auto file = files.find("TvDelay.vst/" + name);
        ASSERT_NE(file, files.end()) << name;
        if (name != executable || bundle != kLinuxBundle) { // whose symbols are stripped
            EXPECT_TRUE(file->second.content == readFile(entry.path())) << name;
        }
        EXPECT_EQ(file->second.permissions, name == executable ? 0755u : 0644u) << name;
        ++found;
    }
    EXPECT_EQ(files.size(), found + 3); // README.md, LICENSE and INSTALL
}

void expectTheTexts(const std::map<std::string, ArchiveEntry>& files) {
    for (const char* const name : {"README.md", "LICENSE"}) {
        ASSERT_EQ(files.count(name), 1u) << name;
        EXPECT_EQ(files.at(name).content,
                  readFile(std::string(TVDELAY_SOURCE_FOLDER) + "/" + name));
    }
}

void expectNothingOfWhoPackedIt(const std::string& archive) {
    std::vector<std::string> paths;
    for (const ArchiveEntry& entry : readArchive(archive)) {
        paths.push_back(entry.path);
        EXPECT_EQ(entry.owner, 0) << entry.path;
        EXPECT_EQ(entry.group, 0) << entry.path;
        EXPECT_EQ(entry.time, kTime) << entry.path;
    }
    EXPECT_TRUE(std::is_sorted(paths.begin(), paths.end()));
}

// As another user would have it: files in another order, of other times and permissions.
void copyAsAnotherWould(const std::string& bundle, const fs::path& to) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(bundle)) {
        if (!entry.is_directory()) {
            files.push_back(fs::relative(entry.path(), bundle));
        }
    }
    std::sort(files.rbegin(), files.rend());
    for (const fs::path& file : files) {
        fs::create_directories((to / file).parent_path());
        fs::copy_file(bundle / file, to / file);
        fs::last_write_time(to / file, fs::file_time_type::clock::now() - std::chrono::hours(50));
        fs::permissions(to / file, fs::perms::owner_read | fs::perms::owner_write);
    }
}

} // namespace

TEST_F(Package, HoldsTheLinuxBundleItsTextsAndAnInstallLine) {
    const auto files = filesIn(linuxArchive(), linuxName());
    expectTheBundle(files, kLinuxBundle, "Contents/x86_64-linux/TvDelay.so");
    expectTheTexts(files);
    EXPECT_EQ(files.at("INSTALL").content, "mkdir -p ~/.vst && cp -r TvDelay.vst ~/.vst/\n");
}

TEST_F(Package, HoldsTheMacosBundleItsTextsAndAnInstallLine) {
    const auto files = filesIn(macArchive(), macName());
    expectTheBundle(files, macBundle(), "Contents/MacOS/TvDelay");
    expectTheTexts(files);
    EXPECT_EQ(files.at("INSTALL").content, "mkdir -p ~/Library/Audio/Plug-Ins/VST && "
                                           "cp -R TvDelay.vst ~/Library/Audio/Plug-Ins/VST/\n");
}

TEST_F(Package, TellsNothingOfWhoPackedItAndWhen) {
    expectNothingOfWhoPackedIt(linuxArchive());
    expectNothingOfWhoPackedIt(macArchive());
}

TEST_F(Package, HasTheSameBytesForTheSameBundles) {
    TemporaryFolder other;
    copyAsAnotherWould(kLinuxBundle, other.path() / "linux.vst");
    copyAsAnotherWould(macBundle(), other.path() / "macos.vst");
    package(other.file("linux.vst"), other.file("macos.vst"), other.file("dist"));
    const std::string dist = other.file("dist/");
    EXPECT_TRUE(readFile(dist + linuxName() + ".tar.gz") == readFile(linuxArchive()));
    EXPECT_TRUE(readFile(dist + macName() + ".zip") == readFile(macArchive()));
}

TEST_F(Package, HoldsALinuxBundleThatLoads) {
    TemporaryFolder unpacked;
    for (const auto& [name, entry] : filesIn(linuxArchive(), linuxName())) {
        const fs::path file = unpacked.path() / name;
        fs::create_directories(file.parent_path());
        writeFile(file, entry.content);
    }
    const LoadedPlugin plugin(unpacked.file("TvDelay.vst/Contents/x86_64-linux/TvDelay.so"));
    AEffect* const effect = plugin.entry()(plainHost);
    ASSERT_NE(effect, nullptr);
    EXPECT_EQ(effect->uniqueID, packFourCharacters('T', 'v', 'D', 'y'));
    effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
}

TEST_F(Package, RefusesWhatIsNoBundle) {
    TemporaryFolder dist;
    const std::vector<std::vector<std::string>> wrong = {
        {},
        {kLinuxBundle, macBundle()},
        {macBundle(), macBundle(), dist.path()},
        {kLinuxBundle, kLinuxBundle, dist.path()},
        {kLinuxBundle, dist.file("none"), dist.path()},
        {kLinuxBundle, macBundle(), linuxArchive() + "/below-a-file"},
    };
    for (const auto& arguments : wrong) {
        const ProcessResult result = runScript(kPackage, arguments, kNoHome);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
        EXPECT_THAT(result.err, testing::StartsWith("package: "));
        EXPECT_EQ(result.out, "");
    }
    EXPECT_THAT(dist.entries(), testing::IsEmpty());
}

TEST(Install, PutsTheBundleIntoTheHomeFolder) {
    TemporaryFolder home;
    const ProcessResult result = runScript(kInstall, {kLinuxBundle}, home.path());
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, home.file(".vst/TvDelay.vst") + "\n");
    const std::string inBundle = "TvDelay.vst/Contents/x86_64-linux/TvDelay.so";
    EXPECT_TRUE(readFile(home.file(".vst/" + inBundle)) ==
                readFile(kLinuxBundle + "/Contents/x86_64-linux/TvDelay.so"));
}

TEST(Install, ReplacesAnOlderBundleAsAWhole) {
    TemporaryFolder home;
    const fs::path bundle = home.path() / ".vst/TvDelay.vst";
    fs::create_directories(bundle / "Contents/Resources");
    writeFile(bundle / "Contents/Resources/old.png", "");
    ASSERT_EQ(runScript(kInstall, {kLinuxBundle}, home.path()).status, 0);
    EXPECT_FALSE(fs::exists(bundle / "Contents/Resources/old.png"));
    EXPECT_TRUE(fs::exists(bundle / "Contents/Resources/switchon.png"));
    std::vector<std::string> left;
    for (const auto& entry : fs::directory_iterator(home.path() / ".vst")) {
        left.push_back(entry.path().filename());
    }
    EXPECT_THAT(left, testing::ElementsAre("TvDelay.vst"));
}

TEST(Install, RefusesWhatIsNoBundle) {
    TemporaryFolder home;
    for (const auto& arguments : std::vector<std::vector<std::string>>{
             {}, {home.path()}, {kLinuxBundle, home.path(), "more"}}) {
        const ProcessResult result = runScript(kInstall, arguments, home.path());
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
        EXPECT_THAT(result.err, testing::StartsWith("install: "));
    }
    EXPECT_THAT(home.entries(), testing::IsEmpty());
}
