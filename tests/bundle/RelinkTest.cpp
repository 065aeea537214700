// The bundle's link step, done again.
#include "tests/bundle/MacBundle.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>

#include <sched.h>

namespace {

std::string outputOf(const std::string& command) {
    const ProcessResult result = runShell(command);
    if (result.status != 0) {
        throw std::runtime_error(command + " failed: " + result.err);
    }
    return result.out;
}

std::string buildFolder() {
    return std::filesystem::path(macBundle()).parent_path();
}

// The shell's line that links the bundle, with another file to write.
std::string linkLine(const std::string& output) {
    std::istringstream commands(outputOf("ninja -C '" + buildFolder() + "' -t commands TvDelay"));
    const std::string own = " -o TvDelay.vst/Contents/MacOS/TvDelay ";
    for (std::string line; std::getline(commands, line);) {
        const std::size_t at = line.find(own);
        if (at != std::string::npos) {
            return line.replace(at, own.size(), " -o '" + output + "' ");
        }
    }
    throw std::runtime_error("the build has no step that links the bundle");
}

std::string linked(const std::string& before, const std::string& output) {
    const std::string line = linkLine(output);
    outputOf("cd '" + buildFolder() + "' && " + before + " sh -c \"" + line + "\"");
    return readFile(output);
}

int firstCore() {
    cpu_set_t cores;
    CPU_ZERO(&cores);
    sched_getaffinity(0, sizeof(cores), &cores);
    int core = 0;
    while (CPU_ISSET(core, &cores) == 0) {
        ++core;
    }
    return core;
}

} // namespace

TEST(Relink, GivesTheSameBytesOnOneCoreAndOnAll) {
    const TemporaryFolder folder;
    const std::string built = readFile(macBundle() + "/Contents/MacOS/TvDelay");
    EXPECT_TRUE(linked("", folder.file("all")) == built);
    EXPECT_TRUE(linked("taskset -c " + std::to_string(firstCore()), folder.file("one")) == built);
}
