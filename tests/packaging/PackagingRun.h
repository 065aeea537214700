// Runs the scripts of packaging/ and looks into what they leave.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "tests/packaging/Archive.h"
#include "tests/support/Process.h"

constexpr std::int64_t kArchiveTime = 1577836800; // of every file in the archives

// The first line of VERSION.
std::string packagedVersion();

// A script of packaging/ by its name; `home` becomes HOME.
ProcessResult runPackaging(const std::string& script, const std::vector<std::string>& arguments,
                           const std::string& home = "/nonexistent");

// One line on standard error, which begins with the script's name, and status 2.
void expectPackagingRefusal(const std::string& script, const std::vector<std::string>& arguments);

// By the path below the archive's one folder, `folder`.
std::map<std::string, ArchiveEntry> filesIn(const std::string& archive, const std::string& folder);

// Expects every file of `bundle` under TvDelay.vst, but for the contents of `stripped`, and
// `executable` to be the only one that is executable.
void expectTheBundle(const std::map<std::string, ArchiveEntry>& files, const std::string& bundle,
                     const std::string& executable, const std::string& stripped = {});

// Neither owners nor times, nor the folder that it was built in.
void expectNothingOfWhoPackedIt(const std::string& archive);

// Copies a folder as another user would have it: files in another order, of other times and
// permissions.
void copyAsAnotherWould(const std::string& folder, const std::filesystem::path& to);
