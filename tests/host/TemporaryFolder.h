#pragma once

#include <filesystem>
#include <string>
#include <vector>

// A new empty folder that goes with the object, contents included.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return folder; }
    std::string file(const std::string& name) const { return (folder / name).string(); }

    // Names of all entries, hidden ones too, in order.
    std::vector<std::string> entries() const;

private:
    std::filesystem::path folder;
};

std::string readFile(const std::string& path);
void writeFile(const std::string& path, const std::string& contents);
