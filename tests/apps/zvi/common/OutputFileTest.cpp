#include "apps/zvi/common/OutputFile.h"

#include "tests/TemporaryFolder.h"

namespace zvi::app::test {

TEST(OutputFile, IsThereWholeOrNotAtAll) {
    namespace fs = std::filesystem;
    zvi::test::TemporaryFolder const folder;
    fs::create_directories(folder.Native("sub"));
    std::string const file = folder.Native("out.txt").string();
    EXPECT_EQ(WriteWholeFile(file, "first"), "");
    EXPECT_EQ(WriteWholeFile(file, "second"), "");
    EXPECT_EQ(folder.Read("out.txt"), "second");
    EXPECT_NE(WriteWholeFile(folder.Native("sub").string(), "x"), "");
    EXPECT_NE(WriteWholeFile(folder.Native("none/out.txt").string(), "x"), "");
    EXPECT_EQ(folder.Names().size(), 2u);

    std::error_code noLinks; // such as a host on which links need a privilege
    fs::create_symlink("out.txt", folder.Native("link"), noLinks);
    if (noLinks)
        GTEST_SKIP() << "the part about links: " << noLinks.message();
    EXPECT_EQ(WriteWholeFile(folder.Native("link").string(), "third"), "");
    EXPECT_EQ(folder.Read("out.txt"), "third");
    EXPECT_TRUE(fs::is_symlink(folder.Native("link")));
}

} // namespace zvi::app::test
