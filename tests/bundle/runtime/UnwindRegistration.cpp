#include "tests/bundle/runtime/UnwindRegistration.h"

#include "tests/bundle/CompactUnwind.h"

#include <stdexcept>

extern "C" void __register_frame(void* frames); // of libgcc

namespace {

// DWARF's numbers of registers, by the compact table's numbers from 1 on.
constexpr std::uint8_t kSavedRegisters[] = {3 /* rbx */, 12, 13, 14, 15};
constexpr std::uint8_t kFramePointer = 6;
constexpr std::uint8_t kReturnAddress = 16;

constexpr std::uint8_t kDefineFrame = 0x0c; // DW_CFA_def_cfa
constexpr std::uint8_t kSavedAt = 0x80;     // DW_CFA_offset, with the register in the low bits

class Writer {
public:
    explicit Writer(std::vector<std::uint8_t>& bytes) : bytes_(bytes) {}

    std::size_t place() const { return bytes_.size(); }
    void byte(unsigned value) { bytes_.push_back(static_cast<std::uint8_t>(value)); }
    void number(std::uint64_t value, unsigned size) {
        for (unsigned i = 0; i < size; ++i) {
            byte(static_cast<unsigned>(value >> (8 * i) & 0xff));
        }
    }
    void address(const void* value) { number(reinterpret_cast<std::uint64_t>(value), 8); }
    void text(const char* value) {
        while (*value != 0) {
            byte(static_cast<unsigned char>(*value++));
        }
        byte(0);
    }
    // A record's length stands before it and is not counted.
    void endRecord(std::size_t start) {
        while ((place() - start) % 8 != 0) {
            byte(0); // DW_CFA_nop
        }
        const auto length = static_cast<std::uint32_t>(place() - start - 4);
        for (unsigned i = 0; i < 4; ++i) {
            bytes_[start + i] = static_cast<std::uint8_t>(length >> (8 * i) & 0xff);
        }
    }

private:
    std::vector<std::uint8_t>& bytes_;
};

// The frame: rbp leads to the caller's, above it lies the return address. Registers lie below it,
// the first at the encoding's distance, each next one higher.
void writeFrame(Writer& writer, std::uint32_t encoding) {
    writer.byte(kDefineFrame);
    writer.byte(kFramePointer);
    writer.byte(16);
    writer.byte(kSavedAt | kFramePointer);
    writer.byte(2);
    writer.byte(kSavedAt | kReturnAddress);
    writer.byte(1);
    const std::uint32_t distance = encoding >> 16 & 0xff; // in words
    for (std::uint32_t i = 0; i < 5; ++i) {
        const std::uint32_t saved = encoding >> (3 * i) & 7;
        if (saved > 5) {
            throw std::runtime_error("the compact unwind table saves an unknown register");
        }
        if (saved != 0) {
            writer.byte(static_cast<unsigned>(kSavedAt | kSavedRegisters[saved - 1]));
            writer.byte(distance - i + 2);
        }
    }
}

void writeEntry(Writer& writer, const BundleImage& image, const CompactUnwind::Entry& entry) {
    const bool language = entry.personality != 0;
    const std::size_t common = writer.place();
    writer.number(0, 4); // length
    writer.number(0, 4); // describes what is common to its functions: here one
    writer.byte(1);      // version
    writer.text(language ? "zPL" : "z");
    writer.byte(1);    // code in bytes
    writer.byte(0x78); // data in words, downward
    writer.byte(kReturnAddress);
    if (language) {
        writer.byte(10);
        writer.byte(0); // an absolute address
        writer.address(*static_cast<void* const*>(image.addressOf(entry.personality)));
        writer.byte(0); // cleanups by absolute address
    } else {
        writer.byte(0);
    }
    writeFrame(writer, entry.encoding);
    writer.endRecord(common);

    const std::size_t function = writer.place();
    writer.number(0, 4);
    writer.number(writer.place() - common, 4);
    writer.address(image.addressOf(entry.start));
    writer.number(entry.end - entry.start, 8);
    writer.byte(language ? 8 : 0);
    if (language) {
        writer.address(entry.cleanups != 0 ? image.addressOf(entry.cleanups) : nullptr);
    }
    writer.endRecord(function);
}

} // namespace

UnwindRegistration::UnwindRegistration(const BundleImage& image) {
    const CompactUnwind table(image.file());
    Writer writer(frames_);
    for (const CompactUnwind::Entry& entry : table.entries()) {
        if (entry.encoding == 0) {
            continue; // nothing may pass
        }
        if (entry.mode() != CompactUnwind::kFrameMode) {
            throw std::runtime_error("the compact unwind table has frames of an unknown kind");
        }
        writeEntry(writer, image, entry);
    }
    writer.number(0, 4);
    __register_frame(frames_.data());
}
