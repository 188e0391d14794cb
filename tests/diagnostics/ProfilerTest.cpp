#include "zvi/diagnostics/Profiler.h"

#include "tests/FailingMemory.h"
#include "tests/diagnostics/ReportFolder.h"
#include "zvi/diagnostics/MProfiler.h"
#include "zvi/diagnostics/ProfileWrite.h"
#include "zvi/diagnostics/ScopeRecordsDetail.h"
#include "zvi/host/UserValues.h"

#include <cstdlib>
#include <sstream>
#include <vector>

namespace zvi::lib::test {

namespace {

using diagnostics::ScopeRecord;
using diagnostics::ScopeRecords;

/// Scopes whose counter, of 4 ticks a second, the test tells.
struct Scopes : ScopeRecords {
    void Push(char const *name, std::int64_t entry, std::int64_t afterPush) {
        std::int64_t const ticks[] = {entry, afterPush};
        ScopeRecords::Push(name, [next = ticks]() mutable { return *next++; });
    }
    void Pop(std::int64_t begin, std::int64_t end) {
        std::int64_t const ticks[] = {begin, end};
        ScopeRecords::Pop(4, [next = ticks]() mutable { return *next++; });
    }
    /// Calls, total, overhead, child and independent seconds.
    std::vector<double> Of(std::string const &name) const {
        auto const found = All().find(name);
        if (found == All().end())
            return {};
        ScopeRecord const &record = found->second;
        return {double(record.calls), record.total, record.overhead, record.child, record.Independent()};
    }
};

using Seconds = std::vector<double>;

std::vector<std::string> Lines(std::string const &text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
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
}

TEST(Profiler, ANameThatCallsItselfCountsTheInnerScopeTwice) {
    Scopes scopes;
    scopes.Push("r", 0, 0);
    scopes.Push("r", 4, 4);
    scopes.Pop(8, 8);
    scopes.Pop(12, 12);
    EXPECT_EQ(scopes.Of("r"), (Seconds{2, 4, 0, 1, 3}));
    scopes.Push(nullptr, 0, 0);
    scopes.Pop(4, 4);
    EXPECT_EQ(scopes.Of(""), (Seconds{1, 1, 0, 0, 1}));
}

TEST(Profiler, AScopeWithoutMemoryIsLostWithThoseInside) {
    if (!FailingMemory::IsPossible())
        GTEST_SKIP() << "a program cannot make the library's allocations fail on this host or in this build";
    char const *const outer = "a name that does not fit into the object itself";
    char const *const inner = "another name that does not fit into the object itself";
    bool hasFailed = true;
    for (long index = 0; hasFailed; ++index) {
        Scopes scopes;
        {
            FailingMemory const memory(index, Shortage::kOnce);
            for (int level = 0; level < 3; ++level)
                scopes.Push(level == 0 ? outer : inner, level, level);
            for (int level = 0; level < 3; ++level)
                scopes.Pop(4, 4);
            hasFailed = memory.HasFailed();
        }
        EXPECT_LE(scopes.All().size(), 2u);
        scopes.Drop();
        scopes.Push(outer, 0, 0);
        scopes.Pop(4, 4);
        EXPECT_EQ(scopes.Of(outer), (Seconds{1, 1, 0, 0, 1})) << "after allocation " << index;
    }
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
    std::vector<std::string> const lines = Lines(folder.Text("PROF.csv"));
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0].substr(0, 18), "Total Work Time : ");
    EXPECT_EQ(lines[1], "Function Name,   Percentage, Independent Work Time, Unit Work Time,        Calls, "
                        "Total Work Time, Child Work Time");
    for (std::size_t i = 2; i < 4; ++i) {
        bool const isOuter = lines[i].starts_with("outer, with a comma, ");
        EXPECT_TRUE(isOuter || lines[i].starts_with("       inner, ")) << lines[i];
        EXPECT_NE(lines[i].find(isOuter ? ",            1, " : ",            3, "), std::string::npos) << lines[i];
    }
    Profiler::GetInstance().PrintResult();
    EXPECT_EQ(Lines(folder.Text("PROF.csv")).size(), 2u);
    EXPECT_EQ(Lines(folder.Text("PROF.csv"))[0], "Total Work Time :     0.000000");
    std::filesystem::remove_all(folder.Path());
    ProfileWrite("kept"), Profiler::GetInstance().PrintResult(); // cannot be written
    std::filesystem::create_directories(folder.Path());
    Profiler::GetInstance().PrintResult();
    EXPECT_EQ(Lines(folder.Text("PROF.csv")).size(), 3u);
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
    ::setenv("XDG_CONFIG_HOME", folder.Path().c_str(), 1);
#endif
    std::string const before = host::UserValue("Profiling");
    for (std::string const value : {"no", "Yes", "", "yes"}) {
        EXPECT_TRUE(host::SetUserValue("Profiling", value));
        EXPECT_EXIT(ProfileAProcess(folder.Path()), testing::ExitedWithCode(0), "");
        if (testing::internal::InDeathTestChild())
            continue;
        std::string const report = folder.Text("profile.txt");
        EXPECT_EQ(Lines(report).size(), value == "yes" ? 2u : 0u);
        EXPECT_EQ(report.find("\na.cpp(1) measured : 1, ") != std::string::npos, value == "yes");
        std::string const written = folder.Text("PROF.csv");
        // The library of Windows is unloaded after the program's own objects, so that no scope of theirs is too late.
        bool const isLate = written.find("too late") == std::string::npos;
        EXPECT_EQ(Lines(written).size(), isLate ? 3u : 4u);
#ifndef _WIN32
        EXPECT_TRUE(isLate);
#endif
        EXPECT_NE(written.find("\n     written, "), std::string::npos);
    }
    EXPECT_TRUE(host::SetUserValue("Profiling", before));
#ifndef _WIN32
    ::unsetenv("XDG_CONFIG_HOME");
#endif
}

} // namespace zvi::lib::test
