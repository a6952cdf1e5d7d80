#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <csignal>

#include "TestFolder.hpp"
#include "core/TextFile.hpp"

namespace Tamber {
namespace {

namespace fs = std::filesystem;
using Files = std::map<std::string, std::string>;

TEST(TextFile, ReadingSaysWhyItFailed) {
    const TestFolder folder;
    folder.Write("file", std::string("a\0\r\n", 4));
    EXPECT_EQ(ReadTextFile(folder / "file", 4).value(), std::string("a\0\r\n", 4));
    EXPECT_EQ(ReadTextFile(folder / "file", 3).error(), "File too large");
    EXPECT_EQ(ReadTextFile(folder / "none").error(), "No such file or directory");
    EXPECT_EQ(ReadTextFile(folder.Path()).error(), "Is a directory");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    for (const fs::path& waiting : {folder / "pipe", fs::path("/dev/zero")})
        EXPECT_EQ(ReadTextFile(waiting).error(), "Not a regular file");
}

TEST(TextFile, ReplacingKeepsOwnerPermissionsAndAttributesAndLeavesNothingBeside) {
    const TestFolder folder;
    EXPECT_TRUE(ReplaceTextFile(folder / "file", "first, and longer"));
    const auto mode = fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read;
    fs::permissions(folder / "file", mode);
    const std::string path = folder / "file";
    const bool marked = setxattr(path.c_str(), "user.note", "mine", 4, 0) == 0;
    const bool given = chown(path.c_str(), 4321, 1234) == 0;
    EXPECT_TRUE(ReplaceTextFile(folder / "file", "second"));
    char note[9] = "";
    EXPECT_TRUE(!marked || getxattr(path.c_str(), "user.note", note, 8) == 4);
    struct stat now {};
    EXPECT_EQ(stat(path.c_str(), &now), 0);
    EXPECT_TRUE(!given || (now.st_uid == 4321 && now.st_gid == 1234));
    EXPECT_EQ(folder.Files(), (Files{{"file", "second"}}));
    EXPECT_EQ(fs::status(folder / "file").permissions(), mode);
}

TEST(TextFile, AFileOfTheUsersBesideTheTargetIsLeftAlone) {
    const TestFolder folder;
    folder.Write("file.new", "mine");
    fs::create_symlink(folder / "elsewhere", folder / "file.new1");
    EXPECT_TRUE(ReplaceTextFile(folder / "file", "text"));
    EXPECT_EQ(FileText(folder / "file.new"), "mine");
    EXPECT_TRUE(fs::is_symlink(folder / "file.new1"));
    EXPECT_FALSE(fs::exists(folder / "elsewhere"));
    EXPECT_EQ(FileText(folder / "file"), "text");
}

TEST(TextFile, ALinkIsFollowedAndStaysALink) {
    const TestFolder folder;
    fs::create_directory(folder / "kept");
    fs::create_symlink("kept/file", folder / "near");
    fs::create_symlink(folder / "near", folder / "far");
    for (const std::string text : {"made at the link's end", "replaced"}) {
        EXPECT_TRUE(ReplaceTextFile(folder / "far", text));
        EXPECT_EQ(FileText(folder / "kept/file"), text);
        EXPECT_TRUE(fs::is_symlink(folder / "far") && fs::is_symlink(folder / "near"));
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / "kept"), {}), 1);
}

TEST(TextFile, AFileIsWrittenInPlaceWhereItHasOtherNamesOrNoneCanBeMadeBesideIt) {
    const TestFolder folder;
    folder.Write("file", "an old and longer text");
    fs::create_hard_link(folder / "file", folder / "other name");
    EXPECT_TRUE(ReplaceTextFile(folder / "file", "text"));
    EXPECT_EQ(folder.Files(), (Files{{"file", "text"}, {"other name", "text"}}));
    const std::string longName(253, 'x');
    for (const std::string text : {"made", "replaced"}) {
        EXPECT_TRUE(ReplaceTextFile(folder / longName, text));
        EXPECT_EQ(FileText(folder / longName), text);
    }
    EXPECT_EQ(ReplaceTextFile(folder / std::string(256, 'x'), "").error(), "File name too long");
}

TEST(TextFile, WhatCannotBeReplacedStaysAsItWasWithAReason) {
    const TestFolder folder;
    fs::create_directory(folder / "folder");
    fs::create_symlink("round", folder / "round");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    const Files before = folder.Files();
    const struct {
        const char *name, *reason;
    } table[] = {{"none/file", "No such file or directory"},
                 {"folder", "Is a directory"},
                 {"round", "Too many levels of symbolic links"},
                 {"pipe", "Not a regular file"}};
    for (const auto& row : table) {
        EXPECT_EQ(CheckReplaceable(folder / row.name).error(), row.reason) << row.name;
        EXPECT_EQ(ReplaceTextFile(folder / row.name, "text").error(), row.reason) << row.name;
        EXPECT_EQ(folder.Files(), before) << row.name;
    }
}

TEST(TextFile, AWriteProtectedFileIsNotReplaced) {
    const TestFolder folder;
    folder.Write("file", "kept");
    fs::permissions(folder / "file", fs::perms::owner_read | fs::perms::others_read);
    fs::permissions(folder.Path(), fs::perms::all);
    const uid_t user = geteuid();
    const bool allPowerful = user == 0;  // for whom nothing is protected
    if (allPowerful && seteuid(65'534) != 0)
        GTEST_SKIP() << "cannot become a user without special rights";
    const auto replaced = ReplaceTextFile(folder / "file", "text");
    ASSERT_EQ(seteuid(user), 0);
    EXPECT_EQ(replaced.error(), "Permission denied");
    EXPECT_EQ(folder.Files(), (Files{{"file", "kept"}}));
}

TEST(TextFile, ADiskThatFillsUpLeavesTheOldFileWholeAndNoHalfBesideIt) {
    const TestFolder folder;
    folder.Write("file", "kept");
    folder.Write("linked", "kept, too");
    fs::create_hard_link(folder / "linked", folder / "other name");
    const Files before = folder.Files();
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit little{1000, limit.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &little), 0);
    for (const std::string& name :
         {std::string("file"), std::string("linked"), std::string("new"), std::string(253, 'x')}) {
        const auto replaced = ReplaceTextFile(folder / name, std::string(100'000, 'x'));
        EXPECT_EQ(replaced.error(), "File too large") << name;
    }
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(folder.Files(), before);
}

}  // namespace
}  // namespace Tamber
