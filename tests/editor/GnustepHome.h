// A user's home as GNUstep programs find it, in a folder of its own.
#pragma once

#include <filesystem>
#include <string>

// For processes that have not asked GNUstep for anything yet: it looks once. Goes with the object.
class GnustepHome {
public:
    // `settings` are the user's for all programs, a property list in text; none when empty.
    explicit GnustepHome(const std::string& settings = "");
    ~GnustepHome();
    GnustepHome(const GnustepHome&) = delete;
    GnustepHome& operator=(const GnustepHome&) = delete;

    // What a program has put there, its settings aside.
    bool isUntouched() const;

private:
    std::filesystem::path folder_;
};
