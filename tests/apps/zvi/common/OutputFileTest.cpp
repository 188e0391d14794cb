#include "apps/zvi/common/OutputFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace zvi::app::test {

TEST(OutputFile, IsThereWholeOrNotAtAll) {
    namespace fs = std::filesystem;
    fs::path const folder = fs::path(testing::TempDir()) / "zvi_output_file";
    fs::remove_all(folder);
    fs::create_directories(folder / "sub");
    fs::path const file = folder / "out.txt";
    auto const content = [&file] {
        std::ifstream stream(file);
        return std::string(std::istreambuf_iterator<char>(stream), {});
    };
    EXPECT_EQ(WriteWholeFile(file.string(), "first"), "");
    EXPECT_EQ(WriteWholeFile(file.string(), "second"), "");
    EXPECT_EQ(content(), "second");
    EXPECT_NE(WriteWholeFile((folder / "sub").string(), "x"), "");
    EXPECT_NE(WriteWholeFile((folder / "none" / "out.txt").string(), "x"), "");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 2);

    std::error_code noLinks; // such as a host on which links need a privilege
    fs::create_symlink("out.txt", folder / "link", noLinks);
    if (noLinks)
        GTEST_SKIP() << "the part about links: " << noLinks.message();
    EXPECT_EQ(WriteWholeFile((folder / "link").string(), "third"), "");
    EXPECT_EQ(content(), "third");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
}

} // namespace zvi::app::test
