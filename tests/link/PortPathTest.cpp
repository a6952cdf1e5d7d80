#include <gtest/gtest.h>

#include <fstream>

#include "platform/PortPath.hpp"

namespace Tamber {
namespace {

TEST(PortPath, LinkInTheFolderGoesBeforeTheSystemsPorts) {
    const std::filesystem::path folder = testing::TempDir() + "tamber-ports";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "com2") << "";
    std::filesystem::create_symlink("/nowhere/at/all", folder / "com3");

    EXPECT_EQ(PortPath(folder, 1), "/dev/ttyS0");
    EXPECT_EQ(PortPath(folder, 2), folder / "com2");
    EXPECT_EQ(PortPath(folder, 3), folder / "com3") << "a board that went away leaves a dead link";
    EXPECT_EQ(PortPath(folder, 4), "/dev/ttyS3");
}

}  // namespace
}  // namespace Tamber
