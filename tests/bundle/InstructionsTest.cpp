// Which machines the code of the macOS bundle runs on: those that macOS 10.9 runs on have SSSE3,
// and only some have more.
#include "tests/bundle/MacBundle.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <regex>
#include <stdexcept>
#include <string>

namespace {

// One of AVX or later, or of SSE4.1 and SSE4.2.
bool needsMoreThanSsse3(const std::string& mnemonic) {
    static const std::regex later(
        "v[a-z0-9]+|round[sp][sd]|p?blend.*|p(extr|insr)[bdq]|insertps|"
        "extractps|pmulld|pmuldq|ptest|dpp[sd]|pmov[sz]x.*|pcmp(eq|gt)q|"
        "pcmp[ei]str[im]|packusdw|mpsadbw|phminposuw|movntdqa|popcnt|"
        "pm(in|ax)(sb|sd|uw|ud)|crc32.*|tzcnt|lzcnt|andn|.*shlx|.*shrx|.*sarx");
    return std::regex_match(mnemonic, later);
}

class Disassembly {
public:
    explicit Disassembly(const std::string& file)
        : pipe_(popen(
              (TVDELAY_OBJDUMP " --macho --disassemble --no-show-raw-insn '" + file + "'").c_str(),
              "r")) {
        if (pipe_ == nullptr) {
            throw std::runtime_error("can't run the disassembler");
        }
    }
    ~Disassembly() { pclose(pipe_); }
    Disassembly(const Disassembly&) = delete;
    Disassembly& operator=(const Disassembly&) = delete;

    bool nextLine(std::string& line) {
        line.clear();
        int next;
        while ((next = std::fgetc(pipe_)) != EOF && next != '\n') {
            line += static_cast<char>(next);
        }
        return next != EOF;
    }

private:
    FILE* pipe_;
};

} // namespace

TEST(Instructions, AreToldApartByTheMachinesThatHaveThem) {
    for (const char* const later :
         {"vmulpd", "vzeroupper", "roundsd", "pblendw", "pinsrq", "popcnt"}) {
        EXPECT_TRUE(needsMoreThanSsse3(later)) << later;
    }
    for (const char* const earlier :
         {"mulpd", "movddup", "palignr", "pinsrw", "haddpd", "cvttsd2si"}) {
        EXPECT_FALSE(needsMoreThanSsse3(earlier)) << earlier;
    }
}

TEST(Instructions, BeyondSsse3AreInTheKernelForAvxAlone) {
    static const std::regex instruction("\\s*[0-9a-f]+:?\\s+([a-z0-9]+).*");
    Disassembly disassembly(macBundle() + "/Contents/MacOS/TvDelay");
    std::string function;
    int checked = 0;
    int inKernel = 0;
    for (std::string line; disassembly.nextLine(line);) {
        std::smatch parts;
        if (!line.empty() && line.back() == ':') {
            function = line;
        } else if (std::regex_match(line, parts, instruction)) {
            const bool later = needsMoreThanSsse3(parts[1]);
            const bool kernel = function.find("Avx") != std::string::npos;
            ++checked;
            inKernel += later && kernel ? 1 : 0;
            EXPECT_FALSE(later && !kernel) << function << " " << line;
        }
    }
    EXPECT_GT(checked, 10000);
    EXPECT_GT(inKernel, 100);
}
