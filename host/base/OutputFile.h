// An output file that appears under its name only when it is complete.
#pragma once

#include <filesystem>
#include <string>

namespace tvhost {

// Until commit() it has no name at all, so nothing of it stays behind however the program ends.
// Where the file system has no unnamed files it is a temporary one in the same folder, which goes
// when the object does, and also when a signal ends the program. An older file under the name stays
// untouched until then and hands on its permissions. One at a time.
class OutputFile {
public:
    enum class Until { kUnnamed, kTemporary };

    // A relative name is seen from the folder that the program was started in. `until` may ask for
    // the temporary file where an unnamed one could be had. Throws UserError when no file can be
    // written there.
    explicit OutputFile(const std::string& target, Until until = Until::kUnnamed);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Open for reading and writing; stays this object's own.
    int descriptor() const { return fileDescriptor_; }

    // Puts the file in its place once all of it has reached the disk. Throws UserError when that
    // fails.
    void commit();

private:
    void openTemporary();
    bool nameTemporary();
    void discard();

    std::string given_;
    std::filesystem::path target_;
    std::string temporary_;
    bool named_ = false; // as the temporary file
    int fileDescriptor_ = -1;
};

// Removes the temporary file, if there is one. May be called in a signal handler.
void removeUnfinishedOutput();

// Whether this process has put a file in its place. May be called in a signal handler.
bool outputWasWritten();

} // namespace tvhost
