#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace Tamber {

inline std::string FileText(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The parts of a text that separators end; the last part needs none.
inline std::vector<std::string> Split(const std::string& text, const std::string& separator) {
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin < text.size();) {
        const auto end = std::min(text.find(separator, begin), text.size());
        parts.push_back(text.substr(begin, end - begin));
        begin = end + separator.size();
    }
    return parts;
}

/// The rows of a data folder's expected.txt, each taken apart at its bars. A file of the folder
/// that has no row is a failure of the test.
inline std::vector<std::vector<std::string>> Expectations(const std::filesystem::path& folder) {
    std::set<std::string> unlisted;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.is_regular_file() && entry.path().filename() != "expected.txt")
            unlisted.insert(entry.path().filename());
    std::vector<std::vector<std::string>> rows;
    for (const std::string& line : Split(FileText(folder / "expected.txt"), "\n")) {
        rows.push_back(Split(line, "|"));
        unlisted.erase(rows.back().at(0));
    }
    EXPECT_TRUE(unlisted.empty() && !rows.empty()) << folder << " " << *unlisted.begin();
    return rows;
}

/// An empty folder that lasts as long as the test.
class TestFolder {
  public:
    TestFolder() { std::filesystem::create_directory(path_); }
    ~TestFolder() { std::filesystem::remove_all(path_); }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
    const std::filesystem::path& Path() const { return path_; }

    void Write(const std::string& name, const std::string& text) const {
        std::ofstream(path_ / name, std::ios::binary) << text;
    }

    /// What lies in the folder: the files' names and texts.
    std::map<std::string, std::string> Files() const {
        std::map<std::string, std::string> files;
        for (const auto& entry : std::filesystem::directory_iterator(path_))
            files[entry.path().filename()] =
                entry.symlink_status().type() == std::filesystem::file_type::regular
                    ? FileText(entry.path())
                    : "no file";
        return files;
    }

  private:
    std::filesystem::path path_ =
        std::filesystem::path(testing::TempDir()) / ("tamber-files-" + std::to_string(::getpid()));
};

}  // namespace Tamber
