// The plug-in's bundle once more, in a folder of its own.
#pragma once

#include <filesystem>
#include <string>

// Goes with the object. Throws std::filesystem::filesystem_error or std::runtime_error.
class BundleCopy {
public:
    // `inner` is a folder to be made around the bundle, for paths that tests ask for.
    explicit BundleCopy(const std::string& inner = "");
    ~BundleCopy();
    BundleCopy(const BundleCopy&) = delete;
    BundleCopy& operator=(const BundleCopy&) = delete;

    const std::filesystem::path& folder() const { return folder_; }
    std::filesystem::path bundle() const; // TvDelay.vst
    std::string code() const;             // the file inside it to load

private:
    std::filesystem::path folder_;
    std::string inner_;
};
