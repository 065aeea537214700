#include "tests/layers/LayerCheck.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string_view>
#include <tuple>

namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 6> kEndings = {".c", ".cpp", ".h", ".m", ".mm", ".S"};

// The C library as C++ programs see it, where they need the older names.
const std::set<std::string>& headersOfC() {
    static const std::set<std::string> headers = {"errno.h",  "math.h",   "signal.h", "stddef.h",
                                                  "stdint.h", "stdlib.h", "string.h"};
    return headers;
}

const std::set<std::string>& headersOfPosix() {
    static const std::set<std::string> headers = {"dlfcn.h",   "fcntl.h", "poll.h",   "pthread.h",
                                                  "sched.h",   "spawn.h", "signal.h", "sys",
                                                  "termios.h", "unistd.h"};
    return headers;
}

struct Include {
    std::string name;
    bool quoted;
};

bool isBelow(const std::string& path, const std::string& place) {
    return path == place || (path.size() > place.size() && path[place.size()] == '/' &&
                             path.compare(0, place.size(), place) == 0);
}

bool isOfStandardLibrary(const std::string& header) {
    return header.find_first_of("./") == std::string::npos || headersOfC().count(header) != 0;
}

std::vector<Include> includesOf(const std::string& text) {
    static const std::regex line(
        R"re((?:^|\n)[ \t]*#[ \t]*(?:include|import)[ \t]*([<"])([^>"\n]+)[>"])re");
    std::vector<Include> includes;
    for (std::sregex_iterator found(text.begin(), text.end(), line), end; found != end; ++found) {
        includes.push_back({(*found)[2], (*found)[1] == "\""});
    }
    return includes;
}

// The name on a door of a row that lets `include` in.
bool opens(const std::string& door, const Include& include) {
    if (include.quoted || isBelow(include.name, door)) {
        return isBelow(include.name, door);
    }
    const std::string folder = include.name.substr(0, include.name.find('/'));
    return door == "*" || (door == "POSIX" && headersOfPosix().count(folder) != 0);
}

bool opensAny(const std::vector<std::string>& doors, const Include& include) {
    return std::any_of(doors.begin(), doors.end(),
                       [&](const std::string& door) { return opens(door, include); });
}

// The row of the deepest place that holds `path`; null when none does.
const Layer* rowOf(const std::string& path, const std::vector<Layer>& table) {
    const Layer* deepest = nullptr;
    for (const Layer& row : table) {
        if (isBelow(path, row.place) &&
            (deepest == nullptr || row.place.size() > deepest->place.size())) {
            deepest = &row;
        }
    }
    return deepest;
}

// A header of the row's own place, and not of a room inside it.
bool isOwn(const std::string& header, const Layer& row, const std::vector<Layer>& table) {
    const Layer* const other = rowOf(header, table);
    const fs::path place(row.place);
    const fs::path folder = place.has_extension() ? place.parent_path() : place;
    return other != nullptr && other->place == folder.string();
}

bool isAllowed(const Include& include, const Layer& row, const std::vector<Layer>& table) {
    if (include.quoted) {
        return isOwn(include.name, row, table) || opensAny(row.project, include);
    }
    return isOfStandardLibrary(include.name) || opensAny(row.libraries, include);
}

} // namespace

std::vector<Source> readSources(const std::string& root, const std::vector<std::string>& folders) {
    std::vector<Source> sources;
    for (const std::string& folder : folders) {
        for (const fs::directory_entry& entry :
             fs::recursive_directory_iterator(fs::path(root) / folder)) {
            const std::string ending = entry.path().extension().string();
            if (entry.is_regular_file() &&
                std::find(kEndings.begin(), kEndings.end(), ending) != kEndings.end()) {
                std::ifstream file(entry.path(), std::ios::binary);
                sources.push_back({entry.path().lexically_relative(root).generic_string(),
                                   {std::istreambuf_iterator<char>(file), {}}});
            }
        }
    }
    std::sort(sources.begin(), sources.end(),
              [](const Source& one, const Source& other) { return one.path < other.path; });
    return sources;
}

std::vector<std::string> wallsBroken(const std::vector<Source>& sources,
                                     const std::vector<Layer>& table) {
    std::vector<std::string> broken;
    for (const Source& source : sources) {
        const Layer* const row = rowOf(source.path, table);
        if (row == nullptr) {
            broken.push_back(source.path + " lies in a place without a row");
            continue;
        }
        for (const Include& include : includesOf(source.text)) {
            if (include.quoted && rowOf(include.name, table) == nullptr) {
                broken.push_back(source.path + " includes \"" + include.name +
                                 "\", which isn't named from the root");
            } else if (!isAllowed(include, *row, table)) {
                broken.push_back(source.path + " includes " + include.name + ", but " + row->place +
                                 ": " + row->why);
            }
        }
    }
    return broken;
}

std::vector<std::string> doorsUnused(const std::vector<Source>& sources,
                                     const std::vector<Layer>& table) {
    std::map<std::tuple<std::string, bool, std::string>, bool> used;
    for (const Layer& row : table) {
        for (const std::string& place : row.project) {
            used[{row.place, true, place}] = false;
        }
        for (const std::string& library : row.libraries) {
            used[{row.place, false, library}] = false;
        }
    }
    for (const Source& source : sources) {
        const Layer* const row = rowOf(source.path, table);
        for (const Include& include : includesOf(source.text)) {
            for (auto& [door, isUsed] : used) {
                const auto& [place, quoted, opened] = door;
                isUsed = isUsed || (row != nullptr && row->place == place &&
                                    quoted == include.quoted && opens(opened, include));
            }
        }
    }
    std::vector<std::string> unused;
    for (const auto& [door, isUsed] : used) {
        if (!isUsed) {
            unused.push_back(std::get<0>(door) + " may include " + std::get<2>(door) +
                             ", and nothing of it does");
        }
    }
    return unused;
}
