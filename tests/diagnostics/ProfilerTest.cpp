#include "zvi/diagnostics/Profiler.h"

#include "tests/FailingMemory.h"
#include "tests/diagnostics/ReportFolder.h"
#include "zvi/diagnostics/MProfiler.h"
#include "zvi/diagnostics/ProfileWrite.h"
#include "zvi/diagnostics/ScopeRecordsDetail.h"
#include "zvi/host/UserValues.h"

#include <cstdlib>
#include <vector>

namespace zvi::lib::test {

namespace {

using diagnostics::ScopeRecord;
using diagnostics::ScopeRecords;

/// Scopes whose counter, of 4 ticks a second, the test tells.
struct Scopes : ScopeRecords {
    void Push(char const *name, std::int64_t entry, std::int64_t afterPush) {
        ScopeRecords::Push(name, [&] { return std::exchange(entry, afterPush); });
    }
    void Pop(std::int64_t begin, std::int64_t end) {
        ScopeRecords::Pop(4, [&] { return std::exchange(begin, end); });
    }
    /// Calls, total, overhead, child and independent seconds.
    std::vector<double> Of(std::string const &name) const {
        ScopeRecord const &record = All().at(name);
        return {double(record.calls), record.total, record.overhead, record.child, record.Independent()};
    }
};

using Seconds = std::vector<double>;

ReportLines const kNoScopes = {"Total Work Time : #",
                               "Function Name,   Percentage, Independent Work Time, Unit Work Time,        Calls, "
                               "Total Work Time, Child Work Time"};

/// Lines of a report that tells so much of each scope.
ReportLines Reported(std::vector<std::string> const &scopes) {
    ReportLines lines = kNoScopes;
    for (std::string const &scope : scopes)
        lines.insert(scope + ", #, #");
    return lines;
}

} // namespace

TEST(Profiler, TellsAScopesTimeFromThatOfTheScopesInside) {
    Scopes scopes;
    scopes.Push("a", 100, 101);
    for (int const start : {110, 120}) {
        scopes.Push("b", start, start + 2);
        scopes.Pop(start + 4, start + 5);
    }
    scopes.Pop(140, 142);
    EXPECT_EQ(scopes.Of("b"), (Seconds{2, 2.5, 1.5, 0, 2.5}));
    EXPECT_EQ(scopes.Of("a"), (Seconds{1, 10.5, 0.75, 2.5, 8}));
    scopes.Pop(150, 151); // nothing is open
    EXPECT_EQ(scopes.All().size(), 2u);
    // A name that calls itself counts the inner scope twice.
    scopes.Push(nullptr, 0, 0);
    scopes.Push("", 4, 4);
    scopes.Pop(8, 8);
    scopes.Pop(12, 12);
    EXPECT_EQ(scopes.Of(""), (Seconds{2, 4, 0, 1, 3}));
}

TEST(Profiler, AScopeWithoutMemoryIsLostWithThoseInside) {
    if (!FailingMemory::IsPossible())
        GTEST_SKIP() << "a program cannot make the library's allocations fail on this host or in this build";
    char const *const outer = "a name that does not fit into the object itself";
    WorkInShortages<Scopes>(
        [outer](Scopes &scopes) {
            scopes.Drop();
            for (char const *const name : {outer, "another name that does not fit into the object itself", outer})
                scopes.Push(name, 0, 0);
            for (std::int64_t end = 4; end <= 12; end += 4)
                scopes.Pop(end, end);
        },
        [outer](Scopes const &scopes) { return scopes.Of(outer); });
}

TEST(Profiler, HashesBytesAsSignedNumbersInSixtyFourBits) {
    EXPECT_EQ(Profiler::myhash(""), 2166136261u);
    EXPECT_EQ(Profiler::myhash(nullptr), 2166136261u);
    EXPECT_EQ(Profiler::myhash("foobar"), 0x2998276FBF9CF968u);
    EXPECT_EQ(Profiler::myhash("\xE9"), 18410401464568744772u);
}

TEST(Profiler, WritesTheReportAndBeginsAnew) {
    ReportFolder const folder;
    Profiler::GetInstance().PrintResult(); // what other tests left behind
    {
        ProfileWrite const outer("outer, with a comma");
        for (int i = 0; i < 3; ++i)
            ProfileWrite const inner("inner");
    }
    Profiler::GetInstance().PrintResult();
    EXPECT_EQ(folder.Lines("PROF.csv"),
              Reported({"outer, with a comma, #, #, #,            1", "       inner, #, #, #,            3"}));
    Profiler::GetInstance().PrintResult();
    EXPECT_EQ(folder.Lines("PROF.csv"), kNoScopes);
    EXPECT_EQ(folder.Read("PROF.csv").find("Total Work Time :     0.000000"), 0u);
    ReportFolder::SetRoots(folder.Native("no such folder"));
    ProfileWrite("kept"), Profiler::GetInstance().PrintResult(); // cannot be written
    ReportFolder::SetRoots(folder.Native());
    Profiler::GetInstance().PrintResult();
    EXPECT_EQ(folder.Lines("PROF.csv"), Reported({"        kept, #, #, #,            1"}));
}

namespace {

/// Outlives the profiler that is made after it.
struct LateScope {
    ~LateScope() { ProfileWrite const late("too late"); }
};

/// What a process of its own does from load to exit; the reports say whether it measures.
void ProfileAProcess(std::filesystem::path const &folder) {
    static LateScope const late;
    ReportFolder::SetRoots(folder);
    static ProfileWrite const *const openAtTheEnd = new ProfileWrite("open at the end");
    EXPECT_TRUE(openAtTheEnd);
    { MProfiler const measured(L"a.cpp", 1, L"measured"); }
    { ProfileWrite const written("written"); }
    std::exit(0);
}

} // namespace

TEST(ProfilingDeathTest, AProcessIsMeasuredFromLoadToExitAsTheUserWants) {
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // the child loads the library anew, and comes through here again
    ReportFolder const folder;
#ifndef _WIN32
    ::setenv("XDG_CONFIG_HOME", folder.Native().c_str(), 1);
#endif
    std::string const before = host::UserValue("Profiling");
    for (std::string const value : {"no", "Yes", "", "yes"}) {
        EXPECT_TRUE(host::SetUserValue("Profiling", value));
        EXPECT_EXIT(ProfileAProcess(folder.Native()), testing::ExitedWithCode(0), "");
        if (testing::internal::InDeathTestChild())
            continue;
        EXPECT_EQ(folder.Lines("profile.txt").count("a.cpp(1) measured : 1, #"), value == "yes" ? 1u : 0u);
        ReportLines expected = Reported({"     written, #, #, #,            1"});
#ifdef _WIN32
        // The library is unloaded after the program's own objects, so that no scope of theirs is too late.
        expected.insert("    too late, #, #, #,            1, #, #");
#endif
        EXPECT_EQ(folder.Lines("PROF.csv"), expected);
    }
    EXPECT_TRUE(host::SetUserValue("Profiling", before));
#ifndef _WIN32
    ::unsetenv("XDG_CONFIG_HOME");
#endif
}

} // namespace zvi::lib::test
