// A program of somebody else's, outside the tree, that links the library as the manual shows.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;

const std::string kSources = TVDELAY_SOURCE_FOLDER;

// Our own warnings would stop it: this project makes errors of all that reach it.
const std::string kNarrowing = "float narrowed(double wide) { return wide; }\n";

// The text between the first pair of fences of `language` in `text` that holds `mark`.
std::string fenced(const std::string& text, const std::string& language, const std::string& mark) {
    const std::string fence = "```" + language + "\n";
    for (std::size_t from = text.find(fence); from != std::string::npos;
         from = text.find(fence, from + 1)) {
        const std::size_t start = from + fence.size();
        const std::string block = text.substr(start, text.find("```", start) - start);
        if (block.find(mark) != std::string::npos) {
            return block;
        }
    }
    ADD_FAILURE() << "no " << language << " with " << mark;
    return {};
}

std::string page(const std::string& name) {
    return readFile(kSources + "/docs/" + name + ".md");
}

void expectSuccess(const std::string& program, const std::vector<std::string>& arguments) {
    const ProcessResult result = runProcess(program, arguments);
    ASSERT_EQ(result.status, 0) << program << "\n" << result.out << result.err;
}

// The stranger's project: what CMake is told by the manual, and one program of the manual's pages.
class Stranger : public testing::Test {
protected:
    void write(const std::string& lists, const std::string& pageOfProgram) {
        fs::create_directory(folder.path() / "project");
        writeFile(folder.file("project/CMakeLists.txt"), lists);
        const std::string text = page(pageOfProgram);
        writeFile(folder.file("project/echoes.cpp"), fenced(text, "cpp", "int main") + kNarrowing);
        const std::size_t end = text.rfind("```");
        const std::size_t start = text.rfind("```\n", end - 1) + 4;
        expected = text.substr(start, end - start);
    }

    void copySources() {
        fs::create_directory_symlink(kSources, folder.path() / "project/tvdelay");
    }

    void install() {
        const ProcessResult result =
            runProcess("cmake", {"--install", TVDELAY_BUILD_FOLDER, "--prefix", prefix(),
                                 "--component", "soundlib"});
        ASSERT_EQ(result.status, 0) << result.err;
    }

    std::string prefix() const { return folder.file("installed"); }

    void expectToBuildAndRun(const std::string& compiler, std::vector<std::string> options = {}) {
        const std::vector<std::string> common = {"-S",
                                                 folder.file("project"),
                                                 "-B",
                                                 folder.file("build"),
                                                 "-G",
                                                 "Ninja",
                                                 "-DCMAKE_CXX_COMPILER=" + compiler,
                                                 "-DCMAKE_CXX_FLAGS=-Werror"};
        options.insert(options.begin(), common.begin(), common.end());
        expectSuccess("cmake", options);
        expectSuccess("cmake", {"--build", folder.file("build")});
        Process::Options here;
        here.folder = folder.path();
        const ProcessResult run = runProcess(folder.file("build/echoes"), {}, here);
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.out, expected);
        expectNothingOfThePlugin();
    }

    void expectNothingOfThePlugin() {
        const std::string cache = readFile(folder.file("build/CMakeCache.txt"));
        for (const char* const package : {"GNUSTEP", "X11", "CAIRO", "SNDFILE", "CLI11", "GTest"}) {
            EXPECT_EQ(cache.find(package), std::string::npos) << package;
        }
    }

    TemporaryFolder folder;
    std::string expected;
};

std::string installedLists() {
    return fenced(page("soundlib"), "cmake", "find_package");
}

std::string copiedLists() {
    return fenced(page("soundlib"), "cmake", "add_subdirectory");
}

std::string replaced(std::string text, const std::string& what, const std::string& by) {
    const std::size_t at = text.find(what);
    EXPECT_NE(at, std::string::npos) << what;
    return text.replace(at, what.size(), by);
}

} // namespace

TEST_F(Stranger, LinksTheInstalledLibrary) {
    write(installedLists(), "soundlib-wav-reader");
    install();
    expectToBuildAndRun("clang++", {"-DCMAKE_PREFIX_PATH=" + prefix()});
}

TEST_F(Stranger, LinksTheInstalledLibraryByAnotherCompiler) {
    write(installedLists(), "soundlib-wav-reader");
    install();
    expectToBuildAndRun("g++", {"-DCMAKE_PREFIX_PATH=" + prefix()});
}

TEST_F(Stranger, BuildsTheLibraryInACopyOfTheRepository) {
    write(copiedLists(), "soundlib-wav-reader");
    copySources();
    expectToBuildAndRun("clang++");
}

TEST_F(Stranger, BuildsTheLibraryWithoutBlocksByAnotherCompiler) {
    write(replaced(copiedLists(), "(tvdelay)", "(tvdelay/soundlib)"), "soundlib-chorus");
    copySources();
    expectToBuildAndRun("g++");
}

TEST_F(Stranger, FetchesTheLibrary) {
    write(replaced(copiedLists(), "add_subdirectory(tvdelay)",
                   "include(FetchContent)\n"
                   "FetchContent_Declare(TvDelay URL nowhere)\n"
                   "FetchContent_MakeAvailable(TvDelay)"),
          "soundlib-biquad");
    expectToBuildAndRun("clang++", {"-DFETCHCONTENT_SOURCE_DIR_TVDELAY=" + kSources});
}

TEST_F(Stranger, InstallsNothingOfOurs) {
    write(copiedLists() + "install(TARGETS echoes)\n", "soundlib-chorus");
    copySources();
    expectToBuildAndRun("g++");
    expectSuccess("cmake", {"--install", folder.file("build"), "--prefix", prefix()});
    std::vector<std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(prefix())) {
        if (!entry.is_directory()) {
            files.push_back(fs::relative(entry.path(), prefix()));
        }
    }
    EXPECT_EQ(files, std::vector<std::string>{"bin/echoes"});
}
