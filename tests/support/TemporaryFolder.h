// A folder that lives as long as a test, and files of a few lines.
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

    const std::filesystem::path& path() const { return path_; }
    std::string file(const std::string& name) const { return (path_ / name).string(); }

    // Writes a file of these bytes and gives its path.
    std::string write(const std::string& name, const std::string& bytes) const;

    // Names of all entries, hidden ones too, in order.
    std::vector<std::string> entries() const;

private:
    std::filesystem::path path_;
};

// Both throw std::runtime_error that names the file.
std::string readFile(const std::string& path);
void writeFile(const std::string& path, const std::string& contents);
