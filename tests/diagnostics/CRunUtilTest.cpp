#include "tests/TemporaryFolder.h"
#include "tests/diagnostics/ChildRuns.h"
#include "tests/text/NotingPrinter.h"

#include "zvi/core/Utf8.h"
#include "zvi/diagnostics/CRunUtil.h"
#include "zvi/diagnostics/MProcessMemory.h"
#include "zvi/host/Environment.h"
#include "zvi/host/Messages.h"
#include "zvi/host/UserValues.h"
#include "zvi/text/MFileCtrl.h"

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
        std::filesystem::path const program = folder.Native("my programs/child a.exe");
        std::filesystem::create_directory(program.parent_path());
        std::filesystem::copy_file(std::filesystem::path(ZVI_TEST_CHILD), program);
        CString path = host::LibraryPath(program).c_str();
        CString arguments = L"touch \"made here\"";
        EXPECT_EQ(util.Run(path, arguments, 0, 1), 1);
        EXPECT_TRUE(std::filesystem::exists(folder.Native("my programs/made here")));
        EXPECT_EQ(enabled, "01");
        CString later = L"touch later";
        EXPECT_EQ(util.Run(path, later, 0, 0), 1);
        while (!std::filesystem::exists(folder.Native("my programs/later")))
            std::this_thread::yield();
        CString nothing = folder.Path("nothing").c_str();
        EXPECT_EQ(util.Run(nothing, arguments, 0, 1), 0);
    }
    EXPECT_EQ(CRunUtil::Instance(), nullptr);
    EXPECT_EQ(host::CurrentFolder(), here);
    host::SetMainWindow({});
}

TEST(CRunUtil, SetsTheEnvironmentOfTheConverter) {
    CRunUtil().SetConvertEnvironment();
    CString const folder = MFileCtrl(host::ModulePath().c_str()).GetFilePath();
    std::string const base = host::NativePath(folder.GetString()).generic_string();
    CString capitals = WideOf(base + "Convert/OCC");
    capitals.MakeUpper();
    std::string const occ = Utf8Of(capitals);
    std::pair<wchar_t const *, std::string> const variables[] = {
        {L"CASROOT", occ},
        {L"CSF_UnitsLexicon", occ + "/UnitsAPI/Lexi_Expr.dat"},
        {L"CSF_XTDefaults", occ + "/XSTEPResourceAdv"},
        {L"CSF_GraphicShr", occ + "/TKOpenGl.dll"},
        {L"STATION", "wnt"},
        {L"SH_Resources", base + "Convert/resource"},
        {L"CSF_BatchHealDefaults", base + "Convert/"},
        {L"MMGT_CLEAR", "1"},
    };
    for (auto const &[name, value] : variables) {
        Heard heard;
        EXPECT_EQ(RunChild(&heard, std::wstring(L"variable ") + name), 0);
        std::string told = heard.ToTheEnd().front();
        std::ranges::replace(told, '\\', '/');
        EXPECT_EQ(told, value + "\r");
    }
}

TEST(MProcessMemory, ReportsGrowthOnceProfilingIsOn) {
    NotingPrinter printer;
    TemporaryFolder const folder;
    host::SetUserValueFolder(folder.Native().string());
    EXPECT_EQ(MProcessMemory(L"inert").GetMemeryUsageByte(), 0);
    EXPECT_EQ(printer.Taken(), L"");
    ASSERT_TRUE(host::SetUserValue("Profiling", "yes"));
    {
        MProcessMemory const memory(L"block");
        EXPECT_GT(memory.GetMemeryUsageMegaByte(), 1);
    }
    CString const told = printer.Taken();
    EXPECT_EQ(told.Find(L"out:block : ("), 0) << Utf8Of(told);
    EXPECT_GT(told.Find(L" Mb);"), 0);
    host::SetUserValueFolder("");
}

} // namespace zvi::lib::test
