#include "zvi/diagnostics/MProfiler.h"

#include "tests/diagnostics/ReportFolder.h"
#include "tests/text/NotingPrinter.h"
#include "zvi/core/CString.h"
#include "zvi/core/Utf8.h"
#include "zvi/diagnostics/CProfilePrinter.h"
#include "zvi/diagnostics/CProfileReporter.h"
#include "zvi/diagnostics/MProfileStart.h"
#include "zvi/host/Counter.h"

#include <vector>

namespace zvi::lib::test {

namespace {

char const *const kHeading = "*** Dumping Profiling Result ***";

/// Adds calls of known length, as a scope does.
struct Calls : MProfileMgr {
    static void Add(wchar_t const *name, double seconds, int line = 1) {
        auto const frequency = static_cast<double>(host::CounterFrequency());
        CalledST(L"a.cpp", line, name, static_cast<std::int64_t>(seconds * frequency));
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

} // namespace

TEST_F(MProfilerTest, MeasuresWhenEnabledAtTheStartAndNotStoppedAtEitherEnd) {
    for (int row = 0; row < 16; ++row) {
        bool const enabled = row & 1, stopped = row & 2, disabledInside = row & 4, stoppedInside = row & 8;
        MProfileMgr::EnableProfilingST(enabled);
        stopped ? MProfileMgr::StopProfilingST() : MProfileMgr::StartProfilingST();
        EXPECT_EQ(MProfileMgr::IsProfilingStoppedST(), stopped);
        {
            MProfiler const profiler(L"a.cpp", 7, L"scope");
            MProfiler const nameless(L"a.cpp", 8, nullptr);
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
    EXPECT_EQ(Report(), "gone;");
    Calls::Add(L"e", 1);
    EXPECT_EQ(Report(gone, 1), "a.cpp(1) e : 1, 1;closed;gone;");
}

TEST_F(MProfilerTest, ARegionReportsWhatItSawFirst) {
    NotingPrinter window;
    MProfileMgr::StopProfilingST();
    {
        MProfileStart const outer;
        EXPECT_EQ(MProfileMgr::IsProfilingStoppedST(), 0);
        Calls::Add(L"outer", 1);
        {
            MProfileStart const inner;
            Calls::Add(L"outer", 1);
            Calls::Add(L"100%s", 2);
        }
        EXPECT_EQ(MProfileMgr::IsProfilingStoppedST(), 0);
        EXPECT_EQ(window.Taken(), L"out:*** Dumping Profiling Result ***;out:a.cpp(1) 100%s : 1, 2;");
        Calls::Add(L"100%s", 3);
    }
    EXPECT_EQ(MProfileMgr::IsProfilingStoppedST(), 1);
    EXPECT_EQ(window.Taken(), L"out:*** Dumping Profiling Result ***;out:a.cpp(1) outer : 2, 2;"
                              L"out:a.cpp(1) 100%s : 1, 3;");
    MProfileStart::AddProfileST(1); // no region, no matter
    EXPECT_EQ(Report(), "gone;");
}

TEST_F(MProfilerTest, TheRegionsForgetTheIdBehindTheLast) {
    constexpr int kIds = 4096;
    {
        MProfileStart const outer;
        Calls::Add(L"name", 1);
        MProfileStart const inner; // without a window its lines are dropped
        for (int i = 1; i <= kIds; ++i)
            Calls::Add(CString(std::to_wstring(i)), 1);
    }
    EXPECT_EQ(Report(), "a.cpp(1) 4096 : 1, 1;closed;gone;");
}

TEST_F(MProfilerTest, ReportersPrintWhenTheyGo) {
    ReportFolder const folder;
    { CProfileReporter const withoutData; }
    EXPECT_EQ(folder.Read("profile.txt"), "");
    Calls::Add(L"\u00B0", 1);
    std::string lentNotes, ownNotes;
    Printer lent(lentNotes);
    {
        CProfileReporter const toFile;
        CProfileReporter const toLent(&lent, 0);
        CProfileReporter const toOwn(new Printer(ownNotes, 0), 1);
    }
    EXPECT_EQ(lentNotes, "a.cpp(1) \u00B0 : 1, 1;closed;");
    EXPECT_EQ(ownNotes, "gone;");
    { CProfileReporter const behind; }
    CProfilePrinter printer;
    printer.PrintLine(L"not open");
    EXPECT_EQ(printer.Open(), 1);
    printer.PrintLine(L"%d%s", 1);
    printer.Close();
    printer.PrintLine(L"closed");
    ReportFolder::SetRoots(folder.Native("no such folder"));
    EXPECT_EQ(printer.Open(), 0);
    { CProfileReporter const silent; }
    EXPECT_EQ(folder.Lines("profile.txt"),
              (ReportLines{kHeading, "a.cpp(1) \u00B0 : 1, #", kHeading, "a.cpp(1) \u00B0 : 1, #", "%d%s"}));
}

} // namespace zvi::lib::test
