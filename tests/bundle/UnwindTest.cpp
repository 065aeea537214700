// How exceptions find their way through the functions of code for macOS.
#include "tests/bundle/CompactUnwind.h"
#include "tests/bundle/DwarfFrames.h"
#include "tests/bundle/MacFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace {

class Unwind : public MacFileTest {
protected:
    const CompactUnwind& compact() { return table_; }

    static const MachOFile::Section& text() { return section("__TEXT", "__text"); }

    // The compiler's own, which ends the program and lets nothing through.
    static constexpr const char* kEndsTheProgram = "___clang_call_terminate";

    static std::vector<MachOFile::Symbol> functions() {
        std::vector<MachOFile::Symbol> inText;
        for (const MachOFile::Symbol& symbol : code().symbols()) {
            if (symbol.address >= text().address && symbol.address < text().address + text().size &&
                symbol.name != kEndsTheProgram) {
                inText.push_back(symbol);
            }
        }
        return inText;
    }

    static bool isFunction(std::uint64_t address) {
        const auto& starts = code().functionStarts();
        return std::find(starts.begin(), starts.end(), address) != starts.end();
    }

    // Sooner or later: a function may first look whether it has anything to do.
    static bool keepsFramePointer(std::uint64_t function) {
        constexpr std::array<unsigned char, 4> kPushAndMove = {0x55, 0x48, 0x89, 0xe5};
        constexpr std::size_t kFarthest = 64;
        const auto size = std::min<std::size_t>(kFarthest, text().address + text().size - function);
        const auto* const bytes =
            reinterpret_cast<const unsigned char*>(code().bytesAt(function, size));
        return std::search(bytes, bytes + size, kPushAndMove.begin(), kPushAndMove.end()) !=
               bytes + size;
    }

private:
    const CompactUnwind table_{code()};
};

} // namespace

TEST_P(Unwind, TablesKnowEveryFunctionThatHasAName) {
    EXPECT_GT(functions().size(), 20u);
    for (const MachOFile::Symbol& function : functions()) {
        EXPECT_TRUE(isFunction(function.address)) << function.name;
    }
}

TEST_P(Unwind, CompactTableCoversEveryFunctionByItsKindOfFrame) {
    const std::vector<DwarfFrame> frames = dwarfFrames(code());
    for (const MachOFile::Symbol& function : functions()) {
        const CompactUnwind::Entry* const entry = compact().covering(function.address);
        ASSERT_NE(entry, nullptr) << function.name;
        if (entry->mode() == CompactUnwind::kDwarfMode) {
            const bool described =
                std::any_of(frames.begin(), frames.end(), [&](const DwarfFrame& frame) {
                    return frame.at == (entry->encoding & 0xffffff) &&
                           frame.function == function.address;
                });
            EXPECT_TRUE(described) << function.name;
        } else {
            EXPECT_EQ(entry->mode(), CompactUnwind::kFrameMode) << function.name;
            EXPECT_TRUE(keepsFramePointer(function.address)) << function.name;
        }
    }
}

TEST_P(Unwind, CompactTableBeginsItsEntriesAtFunctions) {
    ASSERT_GT(compact().entries().size(), 3u);
    for (const CompactUnwind::Entry& entry : compact().entries()) {
        EXPECT_TRUE(isFunction(entry.start)) << std::hex << entry.start;
    }
    EXPECT_GE(compact().entries().back().end, code().functionStarts().back());
    EXPECT_LE(compact().entries().back().end, text().address + text().size);
}

TEST_P(Unwind, CompactTableLeadsToThePersonalityAndToTheCleanups) {
    const MachOFile::Section* const cleanups = code().section("__TEXT", "__gcc_except_tab");
    for (const CompactUnwind::Entry& entry : compact().entries()) {
        if (entry.personality != 0) {
            ASSERT_NE(cleanups, nullptr);
            const MachOFile::Bind* const bind = code().bindAt(entry.personality);
            ASSERT_NE(bind, nullptr);
            EXPECT_EQ(bind->symbol, "___gxx_personality_v0");
            EXPECT_GE(entry.cleanups, cleanups->address);
            EXPECT_LT(entry.cleanups, cleanups->address + cleanups->size);
        } else {
            EXPECT_EQ(entry.cleanups, 0u);
        }
    }
}

TEST_P(Unwind, DwarfDataPointsAtFunctions) {
    for (const DwarfFrame& frame : dwarfFrames(code())) {
        EXPECT_TRUE(isFunction(frame.function)) << std::hex << frame.function;
        EXPECT_LE(frame.function + frame.size, text().address + text().size);
    }
}

INSTANTIATE_TEST_SUITE_P(Mac, Unwind, testing::ValuesIn(kMacFiles), nameOf);
