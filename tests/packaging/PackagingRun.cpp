#include "tests/packaging/PackagingRun.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

namespace fs = std::filesystem;

std::string packagedVersion() {
    const std::string text = readFile(TVDELAY_SOURCE_FOLDER "/VERSION");
    return text.substr(0, text.find('\n'));
}

ProcessResult runPackaging(const std::string& script, const std::vector<std::string>& arguments,
                           const std::string& home) {
    Process::Options options;
    options.environment = {"HOME=" + home};
    return runProcess(TVDELAY_SOURCE_FOLDER "/packaging/" + script, arguments, options);
}

void expectPackagingRefusal(const std::string& script, const std::vector<std::string>& arguments) {
    const ProcessResult result = runPackaging(script, arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    EXPECT_THAT(result.err, testing::StartsWith(fs::path(script).stem().string() + ": "));
    EXPECT_EQ(result.out, "");
}

std::map<std::string, ArchiveEntry> filesIn(const std::string& archive, const std::string& folder) {
    std::map<std::string, ArchiveEntry> files;
    for (const ArchiveEntry& entry : readArchive(archive)) {
        EXPECT_EQ(entry.path.rfind(folder + "/", 0), 0u) << entry.path;
        if (!entry.isFolder) {
            files[entry.path.substr(folder.size() + 1)] = entry;
        }
    }
    return files;
}

void expectTheBundle(const std::map<std::string, ArchiveEntry>& files, const std::string& bundle,
                     const std::string& executable, const std::string& stripped) {
    std::size_t found = 0;
    for (const auto& entry : fs::recursive_directory_iterator(bundle)) {
        if (entry.is_directory()) {
            continue;
        }
        const std::string name = fs::relative(entry.path(), bundle);
        const auto file = files.find("TvDelay.vst/" + name);
        ASSERT_NE(file, files.end()) << name;
        if (name != stripped) {
            EXPECT_TRUE(file->second.content == readFile(entry.path())) << name;
        }
        EXPECT_EQ(file->second.permissions, name == executable ? 0755u : 0644u) << name;
        ++found;
    }
    EXPECT_EQ(found, std::count_if(files.begin(), files.end(), [](const auto& file) {
                  return file.first.rfind("TvDelay.vst/", 0) == 0;
              }));
}

void expectNothingOfWhoPackedIt(const std::string& archive) {
    const std::string builder = std::string(TVDELAY_SOURCE_FOLDER).substr(1);
    std::vector<std::string> paths;
    for (const ArchiveEntry& entry : readArchive(archive)) {
        paths.push_back(entry.path);
        EXPECT_EQ(entry.owner, 0) << entry.path;
        EXPECT_EQ(entry.group, 0) << entry.path;
        EXPECT_EQ(entry.time, kArchiveTime) << entry.path;
        EXPECT_EQ(entry.content.find(builder), std::string::npos) << entry.path;
    }
    EXPECT_TRUE(std::is_sorted(paths.begin(), paths.end()));
}

void copyAsAnotherWould(const std::string& folder, const fs::path& to) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_directory()) {
            files.push_back(fs::relative(entry.path(), folder));
        }
    }
    std::sort(files.rbegin(), files.rend());
    for (const fs::path& file : files) {
        fs::create_directories((to / file).parent_path());
        fs::copy_file(folder / file, to / file);
        fs::last_write_time(to / file, fs::file_time_type::clock::now() - std::chrono::hours(50));
        fs::permissions(to / file, fs::perms::owner_read | fs::perms::owner_write);
    }
}
