// How the calls of code for macOS find their functions at the first use.
#include "tests/bundle/MacFiles.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>

namespace {

class LazyBinding : public MacFileTest {
protected:
    // An instruction's operand, counted from where the next instruction begins.
    static std::uint64_t relative(std::uint64_t operandAt) {
        const auto distance = code().at<std::int32_t>(operandAt);
        return operandAt + sizeof(distance) + static_cast<std::uint64_t>(std::int64_t{distance});
    }

    static bool bytesAre(std::uint64_t address, std::initializer_list<unsigned char> expected) {
        for (const unsigned char byte : expected) {
            if (code().at<unsigned char>(address++) != byte) {
                return false;
            }
        }
        return true;
    }
};

} // namespace

// lea r11, [a word of the loader's]; push r11; jmp [dyld_stub_binder]
TEST_P(LazyBinding, HelpersEndInTheLoader) {
    const std::uint64_t helper = section("__TEXT", "__stub_helper").address;
    ASSERT_TRUE(bytesAre(helper, {0x4c, 0x8d, 0x1d}));
    const MachOFile::Section& data = section("__DATA", "__data");
    EXPECT_GE(relative(helper + 3), data.address);
    EXPECT_LE(relative(helper + 3) + 8, data.address + data.size);
    ASSERT_TRUE(bytesAre(helper + 7, {0x41, 0x53, 0xff, 0x25}));
    const MachOFile::Bind* const binder = code().bindAt(relative(helper + 11));
    ASSERT_NE(binder, nullptr);
    EXPECT_EQ(binder->symbol, "dyld_stub_binder");
    EXPECT_FALSE(binder->lazy);
}

// push the place of what to bind; jmp to where all helpers begin
TEST_P(LazyBinding, EachPointerLeadsToTheHelperThatBindsIt) {
    const MachOFile::Section& helpers = section("__TEXT", "__stub_helper");
    const MachOFile::Section& pointers = section("__DATA", "__la_symbol_ptr");
    for (std::uint64_t at = pointers.address; at < pointers.address + pointers.size; at += 8) {
        ASSERT_TRUE(code().isRebased(at));
        const auto helper = code().at<std::uint64_t>(at);
        ASSERT_GT(helper, helpers.address);
        ASSERT_LE(helper + 10, helpers.address + helpers.size);
        ASSERT_TRUE(bytesAre(helper, {0x68}));
        ASSERT_TRUE(bytesAre(helper + 5, {0xe9}));
        EXPECT_EQ(relative(helper + 6), helpers.address);
        const auto offset = code().at<std::uint32_t>(helper + 1);
        const MachOFile::Bind bind = code().lazyBindAt(offset);
        EXPECT_EQ(bind.address, at) << bind.symbol;
        const MachOFile::Bind* const listed = code().bindAt(at);
        ASSERT_NE(listed, nullptr);
        EXPECT_EQ(bind.symbol, listed->symbol);
        EXPECT_EQ(bind.library, listed->library);
        EXPECT_TRUE(listed->lazy);
    }
}

// jmp [pointer]
TEST_P(LazyBinding, EachStubJumpsThroughAPointerOfItsOwn) {
    const MachOFile::Section& stubs = section("__TEXT", "__stubs");
    const MachOFile::Section& pointers = section("__DATA", "__la_symbol_ptr");
    std::set<std::uint64_t> used;
    for (std::uint64_t at = stubs.address; at < stubs.address + stubs.size; at += 6) {
        ASSERT_TRUE(bytesAre(at, {0xff, 0x25}));
        const std::uint64_t pointer = relative(at + 2);
        EXPECT_GE(pointer, pointers.address);
        EXPECT_LT(pointer, pointers.address + pointers.size);
        used.insert(pointer);
    }
    EXPECT_EQ(used.size(), stubs.size / 6);
    EXPECT_EQ(used.size(), pointers.size / 8);
}

INSTANTIATE_TEST_SUITE_P(Mac, LazyBinding, testing::ValuesIn(kMacFiles), nameOf);
