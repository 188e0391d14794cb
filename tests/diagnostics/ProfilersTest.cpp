#include "tests/FailingMemory.h"
#include "tests/TemporaryFolder.h"
#include "tests/text/NotingPrinter.h"
#include "zvi/core/Utf8.h"
#include "zvi/diagnostics/CProfilePrinter.h"
#include "zvi/diagnostics/CProfileReporter.h"
#include "zvi/diagnostics/MProfileStart.h"
#include "zvi/diagnostics/MProfiler.h"
#include "zvi/diagnostics/ProfileWrite.h"
#include "zvi/diagnostics/Profiler.h"
#include "zvi/diagnostics/ScopeRecordsDetail.h"
#include "zvi/host/Counter.h"
#include "zvi/host/UserValues.h"

#include <algorithm>

namespace zvi::lib::test {

namespace {

char const *const kHeading = "*** Dumping Profiling Result ***";

/// Adds calls of known length, as a scope does.
struct Calls : MProfileMgr {
    static void Add(wchar_t const *name, double seconds, int line = 1) {
        CalledST(L"a.cpp", line, name, std::int64_t(seconds * double(host::CounterFrequency())));
    }
};

/// Notes the lines of reports, without the headings, and its end.
struct Printer : MProfilePrinterAdaptor {
    explicit Printer(std::string &text, int opens = 1) : notes(text), canOpen(opens) {}
    ~Printer() override { notes += "gone;"; }
    int Open() override { return canOpen; }
    void PrintLine(wchar_t const *text, ...) override {
        if (std::string const line = Utf8Of(CString(text)); line != kHeading)
            notes.append(line).append(";");
    }
    void Close() override { notes += "closed;"; }

    std::string &notes;
    int canOpen;
};

template <typename... Ids>
std::string Report(Ids... ids) {
    std::string notes;
    Printer printer(notes);
    MProfileMgr::PrintST(&printer, ids...);
    return notes;
}

struct MProfilerTest : testing::Test {
    MProfilerTest() { MProfileMgr::EnableProfilingST(1); }
    ~MProfilerTest() override {
        MProfileMgr::EnableProfilingST(0);
        MProfileMgr::StartProfilingST();
        MProfileMgr::ClearProfileDataST();
    }
};

/// A folder of the test that stands for the drives C: and X:.
struct ReportFolder : zvi::test::TemporaryFolder {
    ReportFolder() { SetRoots(Native()); }
    ~ReportFolder() { SetRoots({}); }

    static void SetRoots(std::filesystem::path const &folder) {
        for (wchar_t const drive : {L'C', L'X'})
            host::SetDriveRoot(drive, folder);
    }
};

/// Scopes whose counter, of 4 ticks a second, the test tells.
struct Scopes : diagnostics::ScopeRecords {
    void Push(char const *name, std::int64_t entry, std::int64_t afterPush) {
        ScopeRecords::Push(name, [&] { return std::exchange(entry, afterPush); });
    }
    void Pop(std::int64_t begin, std::int64_t end) {
        ScopeRecords::Pop(4, [&] { return std::exchange(begin, end); });
    }
};

} // namespace

TEST_F(MProfilerTest, MeasuresWhenEnabledAtTheStartAndNotStoppedAtEitherEnd) {
    for (int row = 0; row < 16; ++row) {
        bool const enabled = row & 1, stopped = row & 2, disabledInside = row & 4, stoppedInside = row & 8;
        MProfileMgr::EnableProfilingST(enabled);
        stopped ? MProfileMgr::StopProfilingST() : MProfileMgr::StartProfilingST();
        EXPECT_EQ(MProfileMgr::IsProfilingStoppedST(), stopped);
        {
            MProfiler const profiler(L"a.cpp", 7, L"scope"), nameless(L"a.cpp", 8, nullptr);
            MProfileMgr::EnableProfilingST(enabled && !disabledInside);
            if (stoppedInside)
                MProfileMgr::StopProfilingST();
        }
        EXPECT_EQ(Report().find("scope : 1, ") != std::string::npos, enabled && !stopped && !stoppedInside) << row;
        MProfileMgr::ClearProfileDataST();
    }
}

TEST_F(MProfilerTest, ANameHasOneRecordUnderItsFirstLabel) {
    wchar_t text[] = L"later"; // the text behind a pointer may change
    for (wchar_t const *name : {L"100%s", static_cast<wchar_t const *>(text), L"first"})
        Calls::Add(name, 0.25, 3);
    text[0] = L'L';
    Calls::Add(text, 1);
    Calls::Add(CString(L"100%s"), 1.5, 4);
    Calls::Add(nullptr, 1);
    EXPECT_EQ(Report(), "a.cpp(3) 100%s : 2, 1.75;a.cpp(3) later : 1, 0.25;a.cpp(3) first : 1, 0.25;"
                        "a.cpp(1) Later : 1, 1;closed;gone;");
    int const ids[] = {4, 9, 1, -1, 4};
    EXPECT_EQ(Report(ids, 5), "a.cpp(1) Later : 1, 1;a.cpp(3) 100%s : 2, 1.75;a.cpp(1) Later : 1, 1;closed;gone;");
    EXPECT_EQ(Report(ids, 0), "closed;gone;");
    MProfileMgr::PrintST(nullptr);
    MProfileMgr::PrintST(nullptr, nullptr, 0);
    int const gone[] = {1, 77};
    MProfileMgr::ClearProfileDataST(gone, 2);
    Calls::Add(L"new", 2); // takes the id of "Later", its number of names held plus 1, and its label with it
    EXPECT_EQ(Report(ids, 1), "a.cpp(1) new : 1, 2;closed;gone;");
    EXPECT_EQ(Report(), "a.cpp(3) later : 1, 0.25;a.cpp(3) first : 1, 0.25;a.cpp(1) new : 1, 1;a.cpp(1) new : 1, 2;"
                        "closed;gone;");
    MProfileMgr::ClearProfileDataST();
    Calls::Add(L"e", 1);
    EXPECT_EQ(Report(gone, 1), "a.cpp(1) e : 1, 1;closed;gone;");
}

TEST_F(MProfilerTest, ARegionReportsWhatItSawFirst) {
    CString const heading = L"out:*** Dumping Profiling Result ***;";
    {
        NotingPrinter window;
        MProfileMgr::StopProfilingST();
        {
            MProfileStart const outer;
            Calls::Add(L"outer", 1);
            {
                MProfileStart const inner;
                Calls::Add(L"outer", 1);
                Calls::Add(L"100%s", 2);
            }
            EXPECT_EQ(MProfileMgr::IsProfilingStoppedST(), 0);
            EXPECT_EQ(window.Taken(), heading + L"out:a.cpp(1) 100%s : 1, 2;");
            Calls::Add(L"100%s", 3);
        }
        EXPECT_EQ(MProfileMgr::IsProfilingStoppedST(), 1);
        EXPECT_EQ(window.Taken(), heading + L"out:a.cpp(1) outer : 2, 2;out:a.cpp(1) 100%s : 1, 3;");
    }
    MProfileStart::AddProfileST(1); // no region, no matter
    EXPECT_EQ(Report(), "gone;");
    {
        MProfileStart const outer;
        Calls::Add(L"name", 1);
        MProfileStart const inner; // without a window its lines are dropped
        for (int i = 1; i <= 4096; ++i)
            Calls::Add(CString(std::to_wstring(i)), 1);
    }
    EXPECT_EQ(Report(), "a.cpp(1) 4096 : 1, 1;closed;gone;") << "which the regions have no room for";
}

TEST_F(MProfilerTest, ReportersPrintWhenTheyGo) {
    ReportFolder const folder;
    std::string lentNotes, ownNotes;
    Printer lent(lentNotes);
    for (int calls = 0; calls < 2; ++calls) { // nothing is printed without data
        {
            CProfileReporter const toFile;
            CProfileReporter const toLent(&lent, 0);
            CProfileReporter const toOwn(new Printer(ownNotes, 0), 1);
        }
        Calls::Add(L"\u00B0", 1);
    }
    EXPECT_EQ(lentNotes, "a.cpp(1) \u00B0 : 1, 1;closed;");
    EXPECT_EQ(ownNotes, "gone;gone;");
    CProfilePrinter printer;
    printer.PrintLine(L"not open");
    EXPECT_EQ(printer.Open(), 1);
    printer.PrintLine(L"%d%s", 1);
    printer.Close();
    printer.PrintLine(L"closed");
    ReportFolder::SetRoots(folder.Native("no such folder"));
    EXPECT_EQ(printer.Open(), 0);
    EXPECT_EQ(folder.Read("profile.txt"),
              zvi::test::HostText(kHeading + std::string("\na.cpp(1) \u00B0 : 1, 1\n%d%s\n")));
}

TEST(Profiler, TellsAScopesTimeFromThatOfTheScopesInside) {
    Scopes scopes;
    scopes.Push("a", 100, 101);
    for (int const start : {110, 120}) {
        scopes.Push("b", start, start + 2);
        scopes.Pop(start + 4, start + 5);
    }
    scopes.Pop(140, 142);
    EXPECT_EQ(scopes.All().at("a").overhead, 0.75);
    EXPECT_EQ(scopes.All().at("b").overhead, 1.5);
    scopes.Pop(150, 151); // nothing is open
    // A name that calls itself counts the inner scope twice.
    scopes.Push(nullptr, 0, 0);
    scopes.Push("", 4, 4);
    scopes.Pop(8, 8);
    scopes.Pop(12, 12);
    EXPECT_EQ(
        diagnostics::ReportOf(scopes.All()),
        "Total Work Time :    10.500000\n"
        "Function Name,   Percentage, Independent Work Time, Unit Work Time,        Calls, Total Work Time, Child "
        "Work Time\n"
        "           a,     0.761905,     8.000000,     8.000000,            1,    10.500000,     2.500000\n"
        "            ,     0.285714,     3.000000,     1.500000,            2,     4.000000,     1.000000\n"
        "           b,     0.238095,     2.500000,     1.250000,            2,     2.500000,     0.000000\n");
}

TEST_F(FailingMemoryTest, AScopeIsLostWithThoseInside) {
    char const *const outer = "a name that does not fit into the object itself";
    WorkInShortages<Scopes>(
        [outer](Scopes &scopes) {
            scopes.Drop();
            for (char const *const name : {outer, "another name that does not fit into the object itself", outer})
                scopes.Push(name, 0, 0);
            for (std::int64_t end = 4; end <= 12; end += 4)
                scopes.Pop(end, end);
        },
        [](Scopes const &scopes) { return diagnostics::ReportOf(scopes.All()); });
}

TEST(Profiler, HashesBytesAsSignedNumbersInSixtyFourBits) {
    EXPECT_EQ(Profiler::myhash(nullptr), 2166136261u);
    EXPECT_EQ(Profiler::myhash(""), 2166136261u);
    EXPECT_EQ(Profiler::myhash("foobar"), 0x2998276FBF9CF968u);
    EXPECT_EQ(Profiler::myhash("\xE9"), 18410401464568744772u);
}

namespace {

/// What a process of its own does from load to exit; the reports say whether it measures.
void ProfileAProcess(ReportFolder const &folder) {
#ifndef _WIN32 // where the library is unloaded after the program's own objects, so that no scope of theirs is too late
    // Outlives the profiler, which is made after it.
    static struct LateScope {
        ~LateScope() { ProfileWrite const late("too late"); }
    } const late;
#endif
    Profiler &profiler = Profiler::GetInstance();
    { ProfileWrite const reported("in an earlier report"); }
    profiler.PrintResult();
    profiler.StackPush("open at the end");
    { MProfiler const measured(L"a.cpp", 1, L"measured"); }
    for (int i = 0; i < 3; ++i) {
        ProfileWrite const written("a name, with a comma");
        ProfileWrite const inside("inside");
    }
    ReportFolder::SetRoots(folder.Native("no such folder"));
    profiler.PrintResult(); // cannot be written, and drops nothing
    ReportFolder::SetRoots(folder.Native());
    std::exit(0);
}

} // namespace

TEST(ProfilingDeathTest, AProcessIsMeasuredFromLoadToExitAsTheUserWants) {
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // the child loads the library anew, and comes through here again
    ReportFolder const folder;
    host::SetEnvironmentPath(L"XDG_CONFIG_HOME", folder.Path());
    std::string const before = host::UserValue("Profiling");
    for (std::string const value : {"no", "Yes", "", "yes"}) {
        EXPECT_TRUE(host::SetUserValue("Profiling", value));
        EXPECT_EXIT(ProfileAProcess(folder), testing::ExitedWithCode(0), "");
        if (testing::internal::InDeathTestChild())
            continue;
        EXPECT_EQ(folder.Read("profile.txt").find("a.cpp(1) measured : 1, ") != std::string::npos, value == "yes");
        std::string const report = folder.Read("PROF.csv");
        EXPECT_EQ(std::count(report.begin(), report.end(), '\n'), 4) << report;
        for (char const *row : {"\na name, with a comma, ", "\n      inside, "})
            EXPECT_NE(report.find(row), std::string::npos) << report;
    }
    for (int again = 0; again < 2; ++again)
        Profiler::GetInstance().PrintResult();
    EXPECT_EQ(folder.Read("PROF.csv"), zvi::test::HostText(diagnostics::ReportOf({}))) << "all was reported before";
    EXPECT_TRUE(host::SetUserValue("Profiling", before));
    host::SetEnvironmentPath(L"XDG_CONFIG_HOME", L"");
}

} // namespace zvi::lib::test
