#include "zvi/services/MTestEnvMgr.h"

#include "tests/TemporaryFolder.h"
#include "zvi/host/UserValues.h"

namespace zvi::lib::test {

namespace {

/// Keeps the user's values in a folder of the test.
struct MTestEnvMgrTest : testing::Test {
    MTestEnvMgrTest() { host::SetUserValueFolder(temporary.Native("values").string()); }
    ~MTestEnvMgrTest() override { host::SetUserValueFolder(""); }

    static void Store(wchar_t const *name, wchar_t const *value, bool isTaken, wchar_t const *kept) {
        EXPECT_EQ(MTestEnvMgr::SetTestEnvST(name, value), isTaken);
        EXPECT_EQ(MTestEnvMgr::GetTestEnvST(name), kept);
    }

    zvi::test::TemporaryFolder const temporary;
};

} // namespace

TEST_F(MTestEnvMgrTest, AValueIsWhatWasStoredLast) {
    host::SetEnvironmentPath(L"XDG_CONFIG_HOME", temporary.Path("own"));
    for (std::string const &place : {std::string(), temporary.Native("values").string()}) { // the user's own at first
        host::SetUserValueFolder(place);
        for (wchar_t const *name : {L"zvi test", L"Gr\u00F6\u00DFe 2"})
            for (CString const &value : {CString(L'x', 1000), CString(L"\u00B0C \U0001F600 two\r\nlines\n"), CString(),
                                         CString()}) // removing what is not there is no failure
                Store(name, value, true, value);
    }
    EXPECT_EQ(temporary.Names().size(), host::LineEnd() == "\n" ? 2u : 1u) << "where the user's own store is no file";
    host::SetEnvironmentPath(L"XDG_CONFIG_HOME", L"");
    // A file of any editor is read.
    for (char const *text : {"yes", "yes\n", "yes\r\n"}) {
        temporary.Write("values/Profiling", text);
        EXPECT_EQ(MTestEnvMgr::GetTestEnvST(L"Profiling"), L"yes");
    }
    std::filesystem::create_directories(temporary.Native("values/folder"));
    Store(L"folder", L"x", false, L"");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(temporary.Native("values")), {}), 2);
}

TEST_F(MTestEnvMgrTest, NamesLeadNowhereElse) {
    std::wstring const longName(201, L'n');
    for (wchar_t const *name : {L"", L".", L"..", L"../x", L"a/b", L"a\\b", L"C:x", L"a\nb", L"x.", L"x ",
                                longName.c_str(), static_cast<wchar_t const *>(nullptr)})
        Store(name, L"x", false, L"");
    EXPECT_TRUE(temporary.Names().empty());
    EXPECT_FALSE(host::SetUserValue("x", std::string_view("a\0b", 3)));
}

} // namespace zvi::lib::test
