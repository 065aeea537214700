// The built file itself, as the tools for object files show it.
#include "tests/support/Process.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

std::vector<std::string> linesOf(const std::string& command) {
    const ProcessResult result = runShell(command);
    if (result.status != 0) {
        throw std::runtime_error(command + " failed: " + result.err);
    }
    std::vector<std::string> lines;
    std::istringstream text(result.out);
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    return lines;
}

bool startsWith(const std::string& text, const char* start) {
    return text.rfind(start, 0) == 0;
}

// An exchange with memory locks without a prefix.
bool locks(const std::string& instruction) {
    return startsWith(instruction, "lock") ||
           (startsWith(instruction, "xchg") && instruction.find('(') != std::string::npos);
}

} // namespace

TEST(File, ExportsItsEntryAndNothingElse) {
    std::vector<std::string> names;
    for (const std::string& line :
         linesOf(TVDELAY_NM " --dynamic --defined-only '" TVDELAY_PLUGIN_PATH "'")) {
        names.push_back(line.substr(line.find_last_of(' ') + 1));
    }
    EXPECT_EQ(names, std::vector<std::string>{"VSTPluginMain"});
}

// Debian's valgrind gives the whole file up when it meets debug information that it can't read.
TEST(File, HasDebugInformationThatValgrindReads) {
    if (std::string(TVDELAY_SANITIZERS) != "") {
        GTEST_SKIP() << "a sanitizer's code doesn't run under valgrind";
    }
    const std::string self = std::filesystem::read_symlink("/proc/self/exe");
    const ProcessResult result = runProcess(
        "valgrind", {"--tool=none", self, "--gtest_filter=Record.ShowsTheEffectsIdentity"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err.find("debuginfo reader"), std::string::npos) << result.err;
    EXPECT_EQ(result.err.find("unhandled"), std::string::npos) << result.err;
}

TEST(File, HasNoLockedInstruction) {
    EXPECT_TRUE(locks("lock xadd %eax,(%rdi)"));
    EXPECT_TRUE(locks("xchg   %rax,0x8(%rdi)"));
    EXPECT_FALSE(locks("xchg   %ax,%ax"));
    if (std::string(TVDELAY_SANITIZERS) != "") {
        GTEST_SKIP() << "a sanitizer's code is not the product's";
    }
    std::string function;
    std::size_t instructions = 0;
    for (const std::string& line :
         linesOf(TVDELAY_OBJDUMP
                 " --disassemble --demangle --no-show-raw-insn '" TVDELAY_PLUGIN_PATH "'")) {
        const std::size_t tab = line.find('\t');
        if (tab == std::string::npos) {
            function = line;
            continue;
        }
        ++instructions;
        EXPECT_FALSE(locks(line.substr(tab + 1))) << function << '\n' << line;
    }
    EXPECT_GT(instructions, 1000u) << "the disassembler showed no code";
}
