#include "tests/bundle/CompactUnwind.h"

#include <algorithm>
#include <stdexcept>

namespace {

constexpr std::uint32_t kRegularPage = 2;
constexpr std::uint32_t kCompressedPage = 3;
constexpr std::uint32_t kHasCleanups = 0x40000000;

struct RegularPageHead {
    std::uint32_t kind;
    std::uint16_t entriesAt;
    std::uint16_t entries;
};

struct CompressedPageHead {
    std::uint32_t kind;
    std::uint16_t entriesAt;
    std::uint16_t entries;
    std::uint16_t encodingsAt;
    std::uint16_t encodings;
};

struct RegularEntry {
    std::uint32_t function;
    std::uint32_t encoding;
};

struct CleanupsRow {
    std::uint32_t function;
    std::uint32_t cleanups;
};

std::uint64_t addressOfText(const MachOFile& file) {
    for (const MachOFile::Segment& segment : file.segments()) {
        if (segment.name == "__TEXT") {
            return segment.address;
        }
    }
    throw std::runtime_error("the file has no text segment");
}

} // namespace

struct CompactUnwind::Header {
    std::uint32_t version;
    std::uint32_t encodingsAt;
    std::uint32_t encodings;
    std::uint32_t personalitiesAt;
    std::uint32_t personalities;
    std::uint32_t indexAt;
    std::uint32_t rows; // the last tells where the functions end
};

struct CompactUnwind::IndexRow {
    std::uint32_t function;
    std::uint32_t pageAt;
    std::uint32_t cleanupsAt;
};

CompactUnwind::CompactUnwind(const MachOFile& file) : file_(file), base_(addressOfText(file)) {
    const MachOFile::Section* const section = file.section("__TEXT", "__unwind_info");
    if (section == nullptr) {
        throw std::runtime_error("the file has no compact unwind table");
    }
    table_ = section->address;
    const auto& header = file.at<Header>(table_);
    if (header.version != 1 || header.rows < 2) {
        throw std::runtime_error("the compact unwind table is damaged");
    }
    const std::uint64_t index = table_ + header.indexAt;
    for (std::uint32_t i = 0; i + 1 < header.rows; ++i) {
        readPage(header, file.at<IndexRow>(index + i * sizeof(IndexRow)));
    }
    setEnds(base_ + file.at<IndexRow>(index + (header.rows - 1) * sizeof(IndexRow)).function);
    setCleanups(header);
}

const CompactUnwind::Entry* CompactUnwind::covering(std::uint64_t address) const {
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
        return address >= entry.start && address < entry.end;
    });
    return found == entries_.end() ? nullptr : &*found;
}

std::uint32_t CompactUnwind::encodingOf(const Header& header, std::uint64_t page,
                                        std::uint32_t index) const {
    if (index < header.encodings) {
        return file_.at<std::uint32_t>(table_ + header.encodingsAt + index * sizeof(std::uint32_t));
    }
    const auto& head = file_.at<CompressedPageHead>(page);
    return file_.at<std::uint32_t>(page + head.encodingsAt +
                                   (index - header.encodings) * sizeof(std::uint32_t));
}

void CompactUnwind::readPage(const Header& header, const IndexRow& row) {
    const std::uint64_t page = table_ + row.pageAt;
    const auto& head = file_.at<RegularPageHead>(page);
    if (head.kind != kRegularPage && head.kind != kCompressedPage) {
        throw std::runtime_error("the compact unwind table has a page of an unknown kind");
    }
    for (std::uint32_t i = 0; i < head.entries; ++i) {
        Entry entry{};
        if (head.kind == kRegularPage) {
            const auto& regular =
                file_.at<RegularEntry>(page + head.entriesAt + i * sizeof(RegularEntry));
            entry.start = base_ + regular.function;
            entry.encoding = regular.encoding;
        } else {
            const auto packed =
                file_.at<std::uint32_t>(page + head.entriesAt + i * sizeof(std::uint32_t));
            entry.start = base_ + row.function + (packed & 0xffffff);
            entry.encoding = encodingOf(header, page, packed >> 24);
        }
        const std::uint32_t personality = entry.encoding >> 28 & 3;
        if (personality != 0) {
            const std::uint64_t at =
                table_ + header.personalitiesAt + (personality - 1) * sizeof(std::uint32_t);
            entry.personality = base_ + file_.at<std::uint32_t>(at);
        }
        entries_.push_back(entry);
    }
}

void CompactUnwind::setEnds(std::uint64_t end) {
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        entries_[i].end = i + 1 < entries_.size() ? entries_[i + 1].start : end;
        if (entries_[i].end <= entries_[i].start) {
            throw std::runtime_error("the compact unwind table is out of order");
        }
    }
}

void CompactUnwind::setCleanups(const Header& header) {
    const std::uint64_t index = table_ + header.indexAt;
    const std::uint32_t from = file_.at<IndexRow>(index).cleanupsAt;
    const std::uint32_t to =
        file_.at<IndexRow>(index + (header.rows - 1) * sizeof(IndexRow)).cleanupsAt;
    for (std::uint32_t at = from; at < to; at += sizeof(CleanupsRow)) {
        const auto& row = file_.at<CleanupsRow>(table_ + at);
        const auto entry = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& each) {
            return each.start == base_ + row.function;
        });
        if (entry == entries_.end() || (entry->encoding & kHasCleanups) == 0) {
            throw std::runtime_error("the compact unwind table has cleanups of no function");
        }
        entry->cleanups = base_ + row.cleanups;
    }
}
