#include "tests/bundle/ScriptRun.h"

#include "tests/host/TemporaryFolder.h"

#include <sys/wait.h>

#include <cstdlib>
#include <stdexcept>

namespace {

std::string quoted(const std::string& text) {
    std::string result = "'";
    for (const char next : text) {
        result += next == '\'' ? "'\\''" : std::string(1, next);
    }
    return result + "'";
}

} // namespace

ScriptResult runScript(const std::string& script, const std::vector<std::string>& arguments,
                       const std::string& home) {
    const TemporaryFolder said;
    std::string command = "HOME=" + quoted(home) + " " + quoted(script);
    for (const std::string& argument : arguments) {
        command += " " + quoted(argument);
    }
    command += " >" + quoted(said.file("out")) + " 2>" + quoted(said.file("err"));
    const int status = std::system(command.c_str());
    if (status == -1) {
        throw std::runtime_error("can't start " + script);
    }
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readFile(said.file("out")),
            readFile(said.file("err"))};
}
