#include "zvi/services/MTestEnvMgr.h"

#include "tests/TemporaryFolder.h"
#include "zvi/host/UserValues.h"

#include <cstdlib>

namespace zvi::lib::test {

namespace {

/// Keeps the user's values in a folder of the test.
struct MTestEnvMgrTest : testing::Test {
    MTestEnvMgrTest() { host::SetUserValueFolder(temporary.Native("values").string()); }
    ~MTestEnvMgrTest() override { host::SetUserValueFolder(""); }

    static void ExpectValue(wchar_t const *name, CString const &value) {
        EXPECT_EQ(MTestEnvMgr::GetTestEnvST(name), value);
    }

    zvi::test::TemporaryFolder const temporary;
};

} // namespace

TEST_F(MTestEnvMgrTest, AValueIsWhatWasStoredLast) {
    // Removing what is not there is no failure.
    for (wchar_t const *name : {L"Profiling", L"Gr\u00F6\u00DFe 2"})
        for (wchar_t const *value :
             {L"yes", L"no", L" two\r\nlines\n", L"\u00B0C \U0001F600", static_cast<wchar_t const *>(nullptr), L""}) {
            EXPECT_EQ(MTestEnvMgr::SetTestEnvST(name, value), 1);
            ExpectValue(name, value);
        }
    // A file of any editor is read.
    for (char const *text : {"yes", "yes\n", "yes\r\n"}) {
        temporary.Write("values/Profiling", text);
        ExpectValue(L"Profiling", L"yes");
    }
    std::filesystem::create_directories(temporary.Native("values/folder"));
    ExpectValue(L"folder", L"");
    EXPECT_EQ(MTestEnvMgr::SetTestEnvST(L"folder", L"x"), 0);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(temporary.Native("values")), {}), 2);
}

TEST_F(MTestEnvMgrTest, NamesLeadNowhereElse) {
    std::wstring const longName(201, L'n');
    for (wchar_t const *name : {L"", L".", L"..", L"../x", L"a/b", L"a\\b", L"C:x", L"a\nb", L"x.", L"x ",
                                longName.c_str(), static_cast<wchar_t const *>(nullptr)}) {
        EXPECT_EQ(MTestEnvMgr::SetTestEnvST(name, L"x"), 0);
        ExpectValue(name, L"");
    }
    EXPECT_TRUE(temporary.Names().empty());
    EXPECT_FALSE(host::SetUserValue("x", std::string_view("a\0b", 3)));
}

TEST_F(MTestEnvMgrTest, TheUsersOwnStoreKeepsAValue) {
    host::SetUserValueFolder("");
#ifndef _WIN32
    ::setenv("XDG_CONFIG_HOME", temporary.Native("values").c_str(), 1);
#endif
    std::string const name = "zvi test of the own store";
    for (std::string const &value : {"\xC2\xB0" + std::string(1000, 'x'), std::string()}) {
        ASSERT_TRUE(host::SetUserValue(name, value));
        EXPECT_EQ(host::UserValue(name), value);
#ifndef _WIN32
        EXPECT_EQ(std::filesystem::exists(temporary.Native("values/ZORVI/TEST/" + name)), !value.empty());
#endif
    }
#ifndef _WIN32
    ::unsetenv("XDG_CONFIG_HOME");
#endif
}

} // namespace zvi::lib::test
