// What the pages tell of the tree: each file and folder that they name is there, and the page on
// how all is built names each folder.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path& root() {
    static const auto* const path = new fs::path(TVDELAY_SOURCE_FOLDER);
    return *path;
}

std::string textOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// What a build leaves, what git keeps, and what npm fetched: not of the tree.
bool isOfTheTree(const fs::path& folder) {
    const std::string name = folder.filename().string();
    return name != "build" && name != "dist" && name != "node_modules" && name[0] != '.';
}

std::vector<fs::path> foldersIn(const fs::path& folder) {
    std::vector<fs::path> folders;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.is_directory() && isOfTheTree(entry.path())) {
            folders.push_back(entry.path());
        }
    }
    return folders;
}

// The names of all files in the tree, without their folders.
std::set<std::string> fileNames() {
    std::set<std::string> names;
    for (fs::recursive_directory_iterator entry(root()), end; entry != end; ++entry) {
        if (entry->is_directory() && !isOfTheTree(entry->path())) {
            entry.disable_recursion_pending();
        } else if (entry->is_regular_file()) {
            names.insert(entry->path().filename().string());
        }
    }
    return names;
}

std::vector<fs::path> pages() {
    std::vector<fs::path> all;
    for (const fs::path& folder : {root(), root() / "docs", root() / "soundlib"}) {
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (entry.path().extension() == ".md") {
                all.push_back(entry.path());
            }
        }
    }
    return all;
}

std::vector<std::string> found(const std::string& text, const std::regex& pattern) {
    std::vector<std::string> all;
    for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end;
         ++match) {
        all.push_back((*match)[1]);
    }
    return all;
}

std::vector<std::string> linksIn(const std::string& page) {
    static const std::regex link(R"re(\]\(([^)#:]+)(?:#[^)]*)?\))re");
    return found(page, link);
}

// The words of what stands between back quotes, without a leading "./".
std::vector<std::string> quotedWordsIn(const std::string& page) {
    static const std::regex quoted("`([^`\n]+)`");
    std::vector<std::string> words;
    for (const std::string& quote : found(page, quoted)) {
        std::istringstream stream(quote);
        for (std::string word; stream >> word;) {
            words.push_back(word.rfind("./", 0) == 0 ? word.substr(2) : word);
        }
    }
    return words;
}

// A file, a folder, or a class by the name of its files.
bool isThere(const std::string& path) {
    return fs::exists(root() / path) || fs::exists(root() / (path + ".h"));
}

// What the reader is to write.
bool isAnExample(const std::string& word) {
    return word.find("Your") != std::string::npos;
}

TEST(Pages, LeadToFilesThatAreThere) {
    ASSERT_GE(pages().size(), 8u);
    for (const fs::path& page : pages()) {
        for (const std::string& link : linksIn(textOf(page))) {
            EXPECT_TRUE(fs::exists(page.parent_path() / link)) << page << " leads to " << link;
        }
    }
}

TEST(Pages, NameFilesAndFoldersThatAreThere) {
    std::set<std::string> folders;
    for (const fs::path& folder : foldersIn(root())) {
        folders.insert(folder.filename().string());
    }
    static const std::regex sourceFile(R"re([\w.-]+\.(?:cpp|h|mm|cmake|py|sh|md))re");
    const std::set<std::string> names = fileNames();
    int seen = 0;
    for (const fs::path& page : pages()) {
        for (const std::string& word : quotedWordsIn(textOf(page))) {
            const std::size_t slash = word.find('/');
            if (isAnExample(word)) {
                continue;
            }
            if (slash != std::string::npos && folders.count(word.substr(0, slash)) != 0) {
                EXPECT_TRUE(isThere(word)) << page << " names " << word;
                ++seen;
            } else if (std::regex_match(word, sourceFile)) {
                EXPECT_EQ(names.count(word), 1u) << page << " names " << word;
                ++seen;
            }
        }
    }
    EXPECT_GT(seen, 40);
}

// Those of tests/ and bench/ that are named as another folder at the root hold what belongs to it.
TEST(Pages, HowItIsBuiltNamesEachFolder) {
    const std::string page = textOf(root() / "docs/architecture.md");
    const auto isNamed = [&](const std::string& folder) {
        return page.find("`" + folder + "/`") != std::string::npos;
    };
    for (const fs::path& folder : foldersIn(root())) {
        const std::string name = folder.filename().string();
        EXPECT_TRUE(isNamed(name)) << name;
    }
    for (const char* const parent : {"host", "editor/hosting", "platform", "tests", "bench"}) {
        for (const fs::path& folder : foldersIn(root() / parent)) {
            const std::string name = folder.filename().string();
            EXPECT_TRUE(isNamed(name) || isNamed(std::string(parent) + "/" + name))
                << parent << "/" << name;
        }
    }
}

} // namespace
