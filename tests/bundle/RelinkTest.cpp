// The bundle's link step, done again.
#include "tests/bundle/MacBundle.h"
#include "tests/host/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>

#include <sched.h>

namespace {

std::string outputOf(const std::string& command) {
    FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        throw std::runtime_error("can't run " + command);
    }
    std::string output;
    std::array<char, 4096> part;
    std::size_t size;
    while ((size = std::fread(part.data(), 1, part.size(), pipe)) > 0) {
        output.append(part.data(), size);
    }
    if (pclose(pipe) != 0) {
        throw std::runtime_error(command + " failed");
    }
    return output;
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

std::string bytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string linked(const std::string& before, const std::string& output) {
    const std::string line = linkLine(output);
    outputOf("cd '" + buildFolder() + "' && " + before + " sh -c \"" + line + "\"");
    return bytesOf(output);
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
    const std::string built = bytesOf(macBundle() + "/Contents/MacOS/TvDelay");
    ASSERT_FALSE(built.empty());
    EXPECT_TRUE(linked("", folder.file("all")) == built);
    EXPECT_TRUE(linked("taskset -c " + std::to_string(firstCore()), folder.file("one")) == built);
}
