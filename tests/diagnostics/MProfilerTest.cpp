#include "zvi/diagnostics/MProfiler.h"

#include "tests/diagnostics/ReportFolder.h"
#include "tests/text/NotingPrinter.h"
#include "zvi/core/CString.h"
#include "zvi/core/Utf8.h"
#include "zvi/diagnostics/CNSProfilePrinter.h"
#include "zvi/diagnostics/CProfilePrinter.h"
#include "zvi/diagnostics/CProfileReporter.h"
#include "zvi/diagnostics/MProfileStart.h"
#include "zvi/host/Counter.h"

#include <vector>

namespace zvi::lib::test {

namespace {

using Texts = std::vector<std::string>;

char const *const kHeading = "*** Dumping Profiling Result ***";

/// Adds calls of known length, as a scope does.
struct Calls : MProfileMgr {
    static void Add(wchar_t const *name, double seconds, int line = 1) {
        auto const frequency = static_cast<double>(host::CounterFrequency());
        CalledST(L"a.cpp", line, name, static_cast<std::int64_t>(seconds * frequency));
    }
};

/// Keeps the lines of reports, without the headings.
struct Printer : MProfilePrinterAdaptor {
    explicit Printer(int *deleted = nullptr, int opens = 1) : deletions(deleted), canOpen(opens) {}
    ~Printer() override {
        if (deletions)
            ++*deletions;
    }
    int Open() override { return canOpen; }
    void PrintLine(wchar_t const *text, ...) override {
        if (std::string const line = Utf8Of(CString(text)); line != kHeading)
            lines.push_back(line);
    }
    void Close() override { ++closes; }

    Texts lines;
    int closes = 0;
    int *deletions;
    int canOpen;
};

Texts Report() {
    Printer printer;
    MProfileMgr::PrintST(&printer);
    return printer.lines;
}

Texts Report(std::vector<int> const &ids) {
    Printer printer;
    MProfileMgr::PrintST(&printer, ids.data(), static_cast<int>(ids.size()));
    return printer.lines;
}

class MProfilerTest : public testing::Test {
protected:
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
        EXPECT_EQ(Report().size(), enabled && !stopped && !stoppedInside ? 1u : 0u) << row;
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
    EXPECT_EQ(Report(), (Texts{"a.cpp(3) 100%s : 2, 1.75", "a.cpp(3) later : 1, 0.25", "a.cpp(3) first : 1, 0.25",
                               "a.cpp(1) Later : 1, 1"}));
    EXPECT_EQ(Report({4, 9, 1, -1, 4}),
              (Texts{"a.cpp(1) Later : 1, 1", "a.cpp(3) 100%s : 2, 1.75", "a.cpp(1) Later : 1, 1"}));
    EXPECT_EQ(Report({}), Texts{});
    MProfileMgr::PrintST(nullptr);
    MProfileMgr::PrintST(nullptr, nullptr, 0);
}

TEST_F(MProfilerTest, ANewIdIsTheNumberOfNamesHeldPlusOne) {
    for (wchar_t const *name : {L"a", L"b", L"c"})
        Calls::Add(name, 1);
    int const gone[] = {1, 77};
    MProfileMgr::ClearProfileDataST(gone, 2);
    Calls::Add(L"d", 2); // takes the id of "c", and its label with it
    Calls::Add(L"c", 1);
    EXPECT_EQ(Report(), (Texts{"a.cpp(1) b : 1, 1", "a.cpp(1) d : 2, 2", "a.cpp(1) d : 1, 2"}));
    EXPECT_EQ(Report({3}), (Texts{"a.cpp(1) d : 1, 2"}));
    MProfileMgr::ClearProfileDataST();
    Calls::Add(L"e", 1);
    EXPECT_EQ(Report({1}), (Texts{"a.cpp(1) e : 1, 1"}));
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
    EXPECT_EQ(Report(), Texts{});
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
    EXPECT_EQ(Report(), (Texts{"a.cpp(1) 4096 : 1, 1"}));
}

TEST_F(MProfilerTest, ReportersPrintWhenTheyGo) {
    ReportFolder const folder;
    { CProfileReporter const withoutData; }
    EXPECT_EQ(folder.Text("profile.txt"), "");
    Calls::Add(L"\u00B0", 1);
    Printer printer;
    int deletions = 0;
    {
        CProfileReporter const toFile;
        CProfileReporter const lent(&printer, 0);
        CProfileReporter const owned(new Printer(&deletions, 0), 1);
    }
    EXPECT_EQ(printer.lines, (Texts{"a.cpp(1) \u00B0 : 1, 1"}));
    EXPECT_EQ(printer.closes, 1);
    EXPECT_EQ(deletions, 1);
    { CProfileReporter const toFile; }
    std::string const once = std::string(kHeading) + "\na.cpp(1) \u00B0 : 1, 1\n";
    EXPECT_EQ(folder.Text("profile.txt"), once + once);
}

TEST_F(MProfilerTest, ThePrinterWritesNothingWithoutItsFile) {
    CProfilePrinter printer;
    printer.PrintLine(L"not open");
    printer.Close();
    ReportFolder const folder;
    EXPECT_EQ(printer.Open(), 1);
    printer.PrintLine(L"%d%s", 1);
    printer.Close();
    printer.PrintLine(L"closed");
    EXPECT_EQ(folder.Text("profile.txt"), "%d%s\n");
    ReportFolder::SetRoots(folder.Path() / "no such folder");
    EXPECT_EQ(printer.Open(), 0);
    Calls::Add(L"name", 1);
    { CProfileReporter const silent; }
}

} // namespace zvi::lib::test
