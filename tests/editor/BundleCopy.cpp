#include "tests/editor/BundleCopy.h"

#include <cstdlib>
#include <stdexcept>

namespace {

std::filesystem::path original() {
    return std::filesystem::path(TVDELAY_PLUGIN_PATH).parent_path().parent_path().parent_path();
}

} // namespace

BundleCopy::BundleCopy(const std::string& inner) : inner_(inner) {
    std::string pattern = (std::filesystem::temp_directory_path() / "tvdelay-copy-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no folder for a copy of the bundle");
    }
    folder_ = pattern;
    std::filesystem::create_directories(folder_ / inner_);
    std::filesystem::copy(original(), bundle(), std::filesystem::copy_options::recursive);
}

BundleCopy::~BundleCopy() {
    std::filesystem::remove_all(folder_);
}

std::filesystem::path BundleCopy::bundle() const {
    return folder_ / inner_ / original().filename();
}

std::string BundleCopy::code() const {
    return (bundle() / std::filesystem::relative(TVDELAY_PLUGIN_PATH, original())).string();
}
