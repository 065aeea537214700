// How the macOS bundle's calls find their functions at the first use.
#include "tests/bundle/MacBundle.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>

namespace {

// An instruction's operand, counted from where the next instruction begins.
std::uint64_t relative(std::uint64_t operandAt) {
    const auto distance = macBundleCode().at<std::int32_t>(operandAt);
    return operandAt + sizeof(distance) + static_cast<std::uint64_t>(std::int64_t{distance});
}

bool bytesAre(std::uint64_t address, std::initializer_list<unsigned char> expected) {
    for (const unsigned char byte : expected) {
        if (macBundleCode().at<unsigned char>(address++) != byte) {
            return false;
        }
    }
    return true;
}

const MachOFile::Section& section(const char* segment, const char* name) {
    const MachOFile::Section* const found = macBundleCode().section(segment, name);
    if (found == nullptr) {
        throw std::runtime_error(std::string("the bundle has no section ") + name);
    }
    return *found;
}

} // namespace

// lea r11, [a word of the loader's]; push r11; jmp [dyld_stub_binder]
TEST(LazyBinding, HelpersEndInTheLoader) {
    const std::uint64_t helper = section("__TEXT", "__stub_helper").address;
    ASSERT_TRUE(bytesAre(helper, {0x4c, 0x8d, 0x1d}));
    const MachOFile::Section& data = section("__DATA", "__data");
    EXPECT_GE(relative(helper + 3), data.address);
    EXPECT_LE(relative(helper + 3) + 8, data.address + data.size);
    ASSERT_TRUE(bytesAre(helper + 7, {0x41, 0x53, 0xff, 0x25}));
    const MachOFile::Bind* const binder = macBundleCode().bindAt(relative(helper + 11));
    ASSERT_NE(binder, nullptr);
    EXPECT_EQ(binder->symbol, "dyld_stub_binder");
    EXPECT_FALSE(binder->lazy);
}

// push the place of what to bind; jmp to where all helpers begin
TEST(LazyBinding, EachPointerLeadsToTheHelperThatBindsIt) {
    const MachOFile::Section& helpers = section("__TEXT", "__stub_helper");
    const MachOFile::Section& pointers = section("__DATA", "__la_symbol_ptr");
    for (std::uint64_t at = pointers.address; at < pointers.address + pointers.size; at += 8) {
        ASSERT_TRUE(macBundleCode().isRebased(at));
        const auto helper = macBundleCode().at<std::uint64_t>(at);
        ASSERT_GT(helper, helpers.address);
        ASSERT_LE(helper + 10, helpers.address + helpers.size);
        ASSERT_TRUE(bytesAre(helper, {0x68}));
        ASSERT_TRUE(bytesAre(helper + 5, {0xe9}));
        EXPECT_EQ(relative(helper + 6), helpers.address);
        const auto offset = macBundleCode().at<std::uint32_t>(helper + 1);
        const MachOFile::Bind bind = macBundleCode().lazyBindAt(offset);
        EXPECT_EQ(bind.address, at) << bind.symbol;
        const MachOFile::Bind* const listed = macBundleCode().bindAt(at);
        ASSERT_NE(listed, nullptr);
        EXPECT_EQ(bind.symbol, listed->symbol);
        EXPECT_EQ(bind.library, listed->library);
        EXPECT_TRUE(listed->lazy);
    }
}

// jmp [pointer]
TEST(LazyBinding, EachStubJumpsThroughAPointerOfItsOwn) {
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
