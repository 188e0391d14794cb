#include "tests/TemporaryFolder.h"
#include "tests/diagnostics/ChildRuns.h"
#include "tests/text/NotingPrinter.h"

#include "zvi/core/Utf8.h"
#include "zvi/diagnostics/CRunUtil.h"
#include "zvi/diagnostics/MProcessMemory.h"
#include "zvi/host/Messages.h"
#include "zvi/host/UserValues.h"

#include <gtest/gtest.h>

#include <thread>

namespace zvi::lib::test {

using zvi::test::TemporaryFolder;

TEST(CRunUtil, RunsAProgramInItsFolder) {
    TemporaryFolder const folder;
    std::wstring const here = host::CurrentFolder();
    std::string enabled;
    host::SetMainWindow([&](std::uint32_t message, std::uintptr_t first, std::intptr_t) {
        enabled += message == host::kEnableMessage ? std::to_string(first) : "?";
        return std::intptr_t{0};
    });
    {
        CRunUtil const util;
        EXPECT_EQ(CRunUtil::Instance(), &util);
        // A program whose path has blanks, without quotes.
        std::filesystem::create_directory(folder.Native("my programs"));
        std::filesystem::copy_file(std::filesystem::path(ZVI_TEST_CHILD), folder.Native("my programs/child a.exe"));
        CString program = folder.Path("my programs/child a.exe").c_str();
        CString arguments = L"touch \"made here\"", later = L"touch later", nothing = folder.Path("nothing").c_str();
        EXPECT_EQ(util.Run(program, arguments, 0, 1), 1);
        EXPECT_TRUE(std::filesystem::exists(folder.Native("my programs/made here")));
        EXPECT_EQ(enabled, "01");
        EXPECT_EQ(util.Run(program, later, 0, 0), 1);
        while (!std::filesystem::exists(folder.Native("my programs/later")))
            std::this_thread::yield();
        EXPECT_EQ(util.Run(nothing, arguments, 0, 1), 0);
    }
    EXPECT_EQ(CRunUtil::Instance(), nullptr);
    EXPECT_EQ(host::CurrentFolder(), here);
    host::SetMainWindow({});
}

TEST(CRunUtil, SetsTheEnvironmentOfTheConverter) {
    CRunUtil().SetConvertEnvironment();
    std::string const convert = host::NativePath(host::ModulePath()).parent_path().generic_string() + "/Convert/";
    CString capitals = WideOf(convert + "OCC");
    std::string const occ = Utf8Of(capitals.MakeUpper());
    Heard heard;
    EXPECT_EQ(RunChild(&heard, L"variable CASROOT variable CSF_UnitsLexicon variable CSF_XTDefaults "
                               L"variable CSF_GraphicShr variable STATION variable SH_Resources "
                               L"variable CSF_BatchHealDefaults variable MMGT_CLEAR"),
              0);
    Texts told = heard.ToTheEnd();
    for (std::string &text : told)
        std::ranges::replace(text, '\\', '/');
    EXPECT_EQ(told,
              (Texts{occ + "\r", occ + "/UnitsAPI/Lexi_Expr.dat\r", occ + "/XSTEPResourceAdv\r",
                     occ + "/TKOpenGl.dll\r", "wnt\r", convert + "resource\r", convert + "\r", "1\r", "!Exit:0"}));
}

TEST(MProcessMemory, ReportsGrowthOnceProfilingIsOn) {
    NotingPrinter printer;
    TemporaryFolder const folder;
    host::SetUserValueFolder(folder.Native().string());
    EXPECT_EQ(MProcessMemory(L"inert").GetMemeryUsageByte(), 0);
    EXPECT_EQ(printer.Taken(), L"");
    ASSERT_TRUE(host::SetUserValue("Profiling", "yes"));
    EXPECT_GT(MProcessMemory(L"block").GetMemeryUsageMegaByte(), 1);
    CString const told = printer.Taken();
    EXPECT_TRUE(told.Find(L"out:block : (") == 0 && told.Find(L" Mb);") > 0) << Utf8Of(told);
    host::SetUserValueFolder("");
}

} // namespace zvi::lib::test
