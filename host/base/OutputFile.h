// An output file that appears under its name only when it is complete.
#pragma once

#include <filesystem>
#include <string>

namespace tvhost {

// Until commit() it is a temporary file in
// the same folder, which goes when the object does, and also when a signal ends the program. An
// older file under the name stays untouched until then and hands on its permissions. One at a time.
class OutputFile {
public:
    // Throws UserError when no file can be written there.
    explicit OutputFile(const std::string& target);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Open for reading and writing; stays this object's own.
    int descriptor() const { return fileDescriptor_; }

    // Puts the file in its place. Throws UserError when that fails.
    void commit();

private:
    void discard();

    std::string given_;
    std::filesystem::path target_;
    std::string temporary_;
    int fileDescriptor_ = -1;
};

// Removes the temporary file, if there is one. May be called in a signal handler.
void removeUnfinishedOutput();

} // namespace tvhost
