#include "soundlib/examples/OutputFile.h"

#include <cstdio>
#include <utility>

#include <unistd.h>

#include "soundlib/examples/UserError.h"

OutputFile::OutputFile(std::string path)
    : path_(std::move(path)), temporaryPath_(path_ + "." + std::to_string(getpid()) + ".part") {}

OutputFile::~OutputFile() {
    if (!kept_) {
        std::remove(temporaryPath_.c_str());
    }
}

void OutputFile::keep() {
    if (std::rename(temporaryPath_.c_str(), path_.c_str()) != 0) {
        throw UserError(path_ + ": can't be written; a path in a writable folder is needed");
    }
    kept_ = true;
}
