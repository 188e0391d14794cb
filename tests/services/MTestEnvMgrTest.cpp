#include "zvi/services/MTestEnvMgr.h"

#include "tests/TemporaryFolder.h"
#include "zvi/host/UserValues.h"

#include <cstdlib>

namespace zvi::lib::test {

namespace {

/// Keeps the user's values in a folder of the test.
struct MTestEnvMgrTest : testing::Test {
    MTestEnvMgrTest() { host::SetUserValueFolder(folder.string()); }
    ~MTestEnvMgrTest() override { host::SetUserValueFolder(""); }

    zvi::test::TemporaryFolder const temporary;
    std::filesystem::path const folder = temporary.Native("values");
};

} // namespace

TEST_F(MTestEnvMgrTest, AValueIsWhatWasStoredLast) {
    EXPECT_TRUE(MTestEnvMgr::GetTestEnvST(L"Profiling").IsEmpty());
    for (wchar_t const *value : {L"yes", L"no", L" two\r\nlines\n", L"\u00B0C \U0001F600"}) {
        EXPECT_EQ(MTestEnvMgr::SetTestEnvST(L"Profiling", value), 1);
        EXPECT_EQ(MTestEnvMgr::GetTestEnvST(L"Profiling"), CString(value));
    }
    EXPECT_EQ(MTestEnvMgr::SetTestEnvST(L"Gr\u00F6\u00DFe 2", L"1"), 1);
    EXPECT_EQ(MTestEnvMgr::GetTestEnvST(L"Gr\u00F6\u00DFe 2"), CString(L"1"));
    for (int times = 0; times < 2; ++times) // removing what is not there is no failure
        EXPECT_EQ(MTestEnvMgr::SetTestEnvST(L"Profiling", nullptr), 1);
    EXPECT_TRUE(MTestEnvMgr::GetTestEnvST(L"Profiling").IsEmpty());
}

TEST_F(MTestEnvMgrTest, AFileOfAnyEditorIsRead) {
    std::filesystem::create_directories(folder);
    for (char const *text : {"yes", "yes\n", "yes\r\n"}) {
        temporary.Write("values/Profiling", text);
        EXPECT_EQ(MTestEnvMgr::GetTestEnvST(L"Profiling"), CString(L"yes"));
    }
    std::filesystem::create_directories(folder / "folder");
    EXPECT_TRUE(MTestEnvMgr::GetTestEnvST(L"folder").IsEmpty());
    EXPECT_EQ(MTestEnvMgr::SetTestEnvST(L"folder", L"x"), 0);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 2);
}

TEST_F(MTestEnvMgrTest, NamesLeadNowhereElse) {
    std::wstring const longName(201, L'n');
    for (wchar_t const *name :
         {L"", L".", L"..", L"../x", L"a/b", L"a\\b", L"C:x", L"a\nb", L"x.", L"x ", longName.c_str()}) {
        EXPECT_EQ(MTestEnvMgr::SetTestEnvST(name, L"x"), 0);
        EXPECT_TRUE(MTestEnvMgr::GetTestEnvST(name).IsEmpty());
    }
    EXPECT_EQ(MTestEnvMgr::SetTestEnvST(nullptr, L"x"), 0);
    EXPECT_TRUE(MTestEnvMgr::GetTestEnvST(nullptr).IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(folder));
    EXPECT_FALSE(host::SetUserValue("x", std::string_view("a\0b", 3)));
}

TEST_F(MTestEnvMgrTest, TheUsersOwnStoreKeepsAValue) {
    host::SetUserValueFolder("");
#ifndef _WIN32
    ::setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
#endif
    std::string const name = "zvi test of the own store";
    std::string const value = "\xC2\xB0" + std::string(1000, 'x');
    ASSERT_TRUE(host::SetUserValue(name, value));
    EXPECT_EQ(host::UserValue(name), value);
#ifndef _WIN32
    EXPECT_TRUE(std::filesystem::exists(folder / "ZORVI" / "TEST" / name));
    ::unsetenv("XDG_CONFIG_HOME");
#else
    EXPECT_TRUE(host::SetUserValue(name, ""));
    EXPECT_EQ(host::UserValue(name), "");
#endif
}

} // namespace zvi::lib::test
