#include "tests/packaging/Archive.h"

#include <archive.h>
#include <archive_entry.h>

#include <memory>
#include <stdexcept>

namespace {

using Reader = std::unique_ptr<archive, decltype(&archive_read_free)>;

void check(int result, archive* reader) {
    if (result != ARCHIVE_OK) {
        throw std::runtime_error(archive_error_string(reader));
    }
}

std::string contentOf(archive* reader) {
    std::string content;
    char part[65536];
    la_ssize_t size;
    while ((size = archive_read_data(reader, part, sizeof(part))) > 0) {
        content.append(part, static_cast<std::size_t>(size));
    }
    if (size < 0) {
        throw std::runtime_error(archive_error_string(reader));
    }
    return content;
}

} // namespace

std::vector<ArchiveEntry> readArchive(const std::string& path) {
    const Reader reader(archive_read_new(), archive_read_free);
    archive_read_support_filter_all(reader.get());
    archive_read_support_format_all(reader.get());
    constexpr std::size_t kBlock = 16384;
    check(archive_read_open_filename(reader.get(), path.c_str(), kBlock), reader.get());
    std::vector<ArchiveEntry> entries;
    archive_entry* entry = nullptr;
    int result;
    while ((result = archive_read_next_header(reader.get(), &entry)) == ARCHIVE_OK) {
        entries.push_back({archive_entry_pathname(entry), archive_entry_filetype(entry) == AE_IFDIR,
                           static_cast<unsigned>(archive_entry_perm(entry)),
                           archive_entry_uid(entry), archive_entry_gid(entry),
                           archive_entry_mtime(entry), contentOf(reader.get())});
    }
    if (result != ARCHIVE_EOF) {
        throw std::runtime_error(archive_error_string(reader.get()));
    }
    return entries;
}
