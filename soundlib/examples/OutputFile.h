// A file that appears under its name only when it is complete.
#pragma once

#include <string>

class OutputFile {
public:
    explicit OutputFile(std::string path);

    // Removes what was written, unless `keep` has been called.
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Where to write until then, in the same folder.
    const std::string& temporaryPath() const { return temporaryPath_; }

    // Puts the complete file under its name. Throws UserError.
    void keep();

private:
    std::string path_;
    std::string temporaryPath_;
    bool kept_ = false;
};
