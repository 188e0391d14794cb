#include "zvi/host/ReplaceContent.h"

#include "tests/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;
namespace host = zvi::host;

TEST(ReplaceContent, RefusesAReadOnlyFile) {
    zvi::test::TemporaryFolder const folder;
    folder.Write("a", "old");
    fs::permissions(folder.Native("a"), fs::perms::owner_read);
    // Who is allowed everything may write it too.
    std::error_code const failure = host::ReplaceContent(folder.Path("a"), "new");
    EXPECT_EQ(folder.Read("a"), failure ? "old" : "new");
    EXPECT_EQ(folder.Names().size(), 1u);
    fs::permissions(folder.Native("a"), fs::perms::owner_all);
}

TEST(ReplaceContent, FollowsLinksAndRemovesWhatWasLeft) {
    zvi::test::TemporaryFolder const folder;
    fs::create_directory(folder.Native("sub"));
    for (std::wstring const &path : {folder.Path("sub"), std::wstring()})
        EXPECT_TRUE(host::ReplaceContent(path, "x"));
    folder.Write("sub/a", "old");
    folder.Write("sub/a.1.2.zvi-part", "half");
    folder.Write("sub/a.zvi-part", "half");
    std::error_code failure;
    fs::create_symlink("sub/a", folder.Native("link"), failure);
    if (failure)
        GTEST_SKIP() << "no links: " << failure.message();
    EXPECT_FALSE(host::ReplaceContent(folder.Path("link"), "new"));
    EXPECT_TRUE(fs::is_symlink(folder.Native("link")));
    EXPECT_EQ(folder.Read("sub/a"), "new");
    EXPECT_FALSE(fs::exists(folder.Native("sub/a.zvi-part")));
}

#ifndef _WIN32

TEST(ReplaceContent, KeepsPermissionsAndWritesThroughLinksAndToDevices) {
    zvi::test::TemporaryFolder const folder;
    folder.Write("a", "old");
    fs::permissions(folder.Native("a"), fs::perms(0640));
    EXPECT_FALSE(host::ReplaceContent(folder.Path("a"), "new"));
    EXPECT_EQ(fs::status(folder.Native("a")).permissions(), fs::perms(0640));
    fs::create_symlink("b", folder.Native("link"));
    EXPECT_FALSE(host::ReplaceContent(folder.Path("link"), "new"));
    EXPECT_EQ(folder.Read("b"), "new");
    fs::create_symlink("loop", folder.Native("loop"));
    EXPECT_EQ(host::ReplaceContent(folder.Path("loop"), "x"), std::errc::too_many_symbolic_link_levels);
    EXPECT_EQ(host::ReplaceContent(L"\\dev\\full", "x"), std::errc::no_space_on_device);
    EXPECT_FALSE(host::ReplaceContent(L"\\dev\\null", "x"));
}

TEST(ReplaceContent, WritesInPlaceWhereTheNameLeavesNoRoomBeside) {
    zvi::test::TemporaryFolder const folder;
    std::string const name(250, 'n');
    folder.Write(name, "the old and longer content");
    for (char const *content : {"new", "longer than that was"}) {
        EXPECT_FALSE(host::ReplaceContent(folder.Path(name), content));
        EXPECT_EQ(folder.Read(name), content);
    }
}

#endif
