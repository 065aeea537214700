// The manual page and the completions tell what --help tells.
#include "tests/host/Tvhost.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <set>

using testing::HasSubstr;

namespace {

const std::vector<std::vector<std::string>> kCommands = {
    {"info"},     {"list"},           {"render"},         {"play"},  {"plot"},  {"edit"},
    {"snapshot"}, {"preset", "save"}, {"preset", "show"}, {"check"}, {"manual"}};

std::string outputOf(const std::vector<std::string>& arguments) {
    const ProcessResult result = runTvhost(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    return result.out;
}

std::string pathOf(const std::vector<std::string>& words) {
    std::string path;
    for (const std::string& word : words) {
        path += (path.empty() ? "" : " ") + word;
    }
    return path;
}

// Long options that begin a line of --help.
std::set<std::string> optionsOf(std::vector<std::string> command) {
    command.push_back("--help");
    const std::string help = outputOf(command);
    std::set<std::string> options;
    const std::regex line("\n  (?:-[a-z],)?(--[a-z-]+)");
    for (std::sregex_iterator at(help.begin(), help.end(), line), end; at != end; ++at) {
        options.insert((*at)[1]);
    }
    return options;
}

std::set<std::string> found(const std::string& text, const char* pattern) {
    std::set<std::string> options;
    const std::regex expression(pattern);
    for (std::sregex_iterator at(text.begin(), text.end(), expression), end; at != end; ++at) {
        options.insert((*at)[1]);
    }
    return options;
}

// The lines of `text` from the one with `begin` to the one with `end`.
std::string part(const std::string& text, const std::string& begin, const std::string& end) {
    const std::size_t from = text.find(begin);
    EXPECT_NE(from, std::string::npos) << begin;
    return from == std::string::npos ? "" : text.substr(from, text.find(end, from + 1) - from);
}

} // namespace

TEST(Manual, IsComparedForEveryCommand) {
    const std::string help = outputOf({"--help"});
    std::set<std::string> compared;
    for (const auto& command : kCommands) {
        compared.insert(command.front());
    }
    EXPECT_EQ(found(help.substr(help.find("Subcommands:")), "\\n  ([a-z]+) "), compared);
}

TEST(Manual, TellsTheOptionsOfEachCommandAndNoOthers) {
    std::string page = outputOf({"manual"});
    for (std::size_t at; (at = page.find("\\-")) != std::string::npos;) {
        page.erase(at, 1);
    }
    for (const auto& command : kCommands) {
        SCOPED_TRACE(pathOf(command));
        const std::string section =
            part(page, ".SS \\fBtvhost " + pathOf(command) + "\\fR", "\n.S");
        EXPECT_EQ(found(section, "\\n\\.TP\\n(?:\\\\fB-[a-z]\\\\fR, )?\\\\fB(--[a-z-]+)\\\\fR"),
                  optionsOf(command));
    }
}

TEST(Manual, IsAPageThatManReadsWithoutComplaint) {
    TemporaryFolder folder;
    writeFile(folder.file("tvhost.1"), outputOf({"manual"}));
    const ProcessResult result = runProcess(
        "man", {"--warnings=all", "-E", "UTF-8", "-l", "-Tutf8", folder.file("tvhost.1")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, HasSubstr("tvhost render guitar.wav echo.wav --program SlapBack"));
}

TEST(Completion, OffersTheOptionsOfEachCommandInBash) {
    TemporaryFolder folder;
    writeFile(folder.file("completion"), outputOf({"manual", "--completion", "bash"}));
    for (const auto& command : kCommands) {
        SCOPED_TRACE(pathOf(command));
        const std::string words = std::to_string(command.size() + 1);
        const ProcessResult result = runProcess(
            "bash", {"-c", "source " + folder.file("completion") + "; COMP_WORDS=(tvhost " +
                               pathOf(command) + " --); COMP_CWORD=" + words +
                               "; _tvhost; printf '%s\\n' \"${COMPREPLY[@]}\""});
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(found("\n" + result.out, "\\n(--[a-z-]+)"), optionsOf(command));
    }
    const ProcessResult first = runProcess(
        "bash",
        {"-c", "source " + folder.file("completion") +
                   "; COMP_WORDS=(tvhost pl); COMP_CWORD=1; _tvhost; echo ${COMPREPLY[*]}"});
    EXPECT_EQ(first.out, "play plot\n");
    const ProcessResult inner =
        runProcess("bash", {"-c", "source " + folder.file("completion") +
                                      "; COMP_WORDS=(tvhost preset s); COMP_CWORD=2; _tvhost; echo "
                                      "${COMPREPLY[*]}"});
    EXPECT_EQ(inner.out, "save show\n");
}

TEST(Completion, OffersTheOptionsOfEachCommandInZsh) {
    TemporaryFolder folder;
    const std::string text = outputOf({"manual", "--completion", "zsh"});
    writeFile(folder.file("_tvhost"), text);
    const ProcessResult result = runProcess("zsh", {"-n", folder.file("_tvhost")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    for (const auto& command : kCommands) {
        SCOPED_TRACE(pathOf(command));
        const std::string section = part(text, "'" + pathOf(command) + "')", ";;");
        EXPECT_EQ(found(section, "'\\*(--[a-z-]+)\\["), optionsOf(command));
    }
}

TEST(Completion, OffersTheOptionsOfEachCommandInFish) {
    TemporaryFolder folder;
    writeFile(folder.file("completion"), outputOf({"manual", "--completion", "fish"}));
    Process::Options options;
    options.environment = {"HOME=" + folder.path().string()};
    for (const auto& command : kCommands) {
        SCOPED_TRACE(pathOf(command));
        const ProcessResult result =
            runProcess("fish",
                       {"--no-config", "-c",
                        "source " + folder.file("completion") + "; complete -C 'tvhost " +
                            pathOf(command) + " --'"},
                       options);
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(found("\n" + result.out, "\\n(--[a-z-]+)"), optionsOf(command));
    }
}
