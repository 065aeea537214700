#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::string name = (fs::temp_directory_path() / "tvdelay-XXXXXX").string();
    if (!mkdtemp(name.data())) {
        throw std::runtime_error("no temporary folder");
    }
    path_ = fs::canonical(name);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code error;
    fs::remove_all(path_, error);
}

std::string TemporaryFolder::write(const std::string& name, const std::string& bytes) const {
    writeFile(file(name), bytes);
    return file(name);
}

std::vector<std::string> TemporaryFolder::entries() const {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(path_)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path);
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const std::string& path, const std::string& contents) {
    std::ofstream file(path, std::ios::binary);
    file << contents;
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path);
    }
}
