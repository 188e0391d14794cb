#include "zvi/text/MWriteLog.h"

#include "tests/KilledWriter.h"
#include "tests/TemporaryFolder.h"
#include "zvi/core/Utf8.h"
#include "zvi/host/CFileException.h"
#include "zvi/text/CAutoLogWrite.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>

#ifndef _WIN32
#include <sys/mman.h>

#include <atomic>
#endif

namespace zvi::lib::test {

namespace {

/// A log with these lines.
std::string LogText(std::string const &lines, std::string const &address = "") {
    std::string const rule(50, '-');
    return zvi::test::HostText(rule + "\n Log Information\n\n " + address + " for more details information.\n\n" +
                               rule + "\n" + lines);
}

struct TimedLog : MWriteLog {
    using MWriteLog::GetTimeString;
};

struct MWriteLogTest : testing::Test {
    zvi::test::TemporaryFolder const folder;
    CString path = folder.Path("l.log").c_str();
};

} // namespace

TEST_F(MWriteLogTest, WritesItsLines) {
    MWriteLog log;
    EXPECT_EQ(MWriteLog::Instance(), &log);
    EXPECT_FALSE(log.Write(L"x") || log.WriteMsg(L"a", L"b"));
    log.WriteLine(L"nowhere");
    MWriteLog::SetSiteAddress(L"www.example.org");
    ASSERT_TRUE(log.StartLog(path));
    MWriteLog::SetSiteAddress(L"");
    EXPECT_EQ(folder.Read("l.log"), LogText("", "www.example.org")) << "every write is flushed";
    EXPECT_TRUE(log.WriteMsg(L"A", L"100 %d") && log.WriteWarning(L"A", L"B") && log.WriteError(L"A", L""));
    EXPECT_TRUE(log.Write(L"%d%% ", 50));
    log.WriteLine(L"%d");
    std::string const lines = "[Message][A] : 100 %d\n[Warning][A] : B\n[Error][A] : \n50% %d\n";
    EXPECT_EQ(folder.Read("l.log"), LogText(lines, "www.example.org"));
    ASSERT_TRUE(log.StartLog(path)) << "begins anew";
    log.EndLog();
    EXPECT_EQ(folder.Read("l.log"), LogText(""));
    EXPECT_FALSE(log.Write(L"x"));
    CString none((folder.Path("none") + L"\\x").c_str());
    EXPECT_FALSE(log.StartLog(none));
    log.EndLog();
}

TEST_F(MWriteLogTest, IsTheObjectMadeLast) {
    TimedLog timed;
    {
        MWriteLog const second(timed);
        EXPECT_EQ(MWriteLog::Instance(), &second);
    }
    EXPECT_EQ(MWriteLog::Instance(), nullptr);
    std::string const time = Utf8Of(timed.GetTimeString());
    std::regex const form("2\\d{3}-([1-9]|1[0-2])-[1-3]?\\d [12]?\\d:[1-5]?\\d:[1-6]?\\d");
    EXPECT_TRUE(std::regex_match(time, form)) << time;
}

TEST_F(MWriteLogTest, NamesAFailedRun) {
    path = folder.Path("x_Success_Success.log").c_str();
    { CAutoLogWrite const withoutLog(path); }
    EXPECT_TRUE(folder.Names().empty());
    MWriteLog log;
    CAutoLogWrite run(path);
    log.WriteLine(L"done");
    run.WriteFile_Fail();
    EXPECT_FALSE(log.Write(L"x"));
    EXPECT_EQ(run.GetLogFile(), path);
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"x_Fail_Fail.log"});
    CAutoLogWrite(path).WriteFile_Fail();
    EXPECT_EQ(folder.Read("x_Fail_Fail.log"), LogText("done\n")) << "an earlier log is not lost";
    CAutoLogWrite(CString(folder.Path("plain.log").c_str())).WriteFile_Fail();
    EXPECT_EQ(folder.Read("plain.log"), LogText(""));
    { CAutoLogWrite const ended(path); }
    EXPECT_FALSE(log.Write(L"x"));
}

#ifndef _WIN32
TEST_F(MWriteLogTest, HoldsEveryLineThatAKilledProcessWroteAndTellsThatTheDiskIsFull) {
    MWriteLog log;
    auto &written = *static_cast<std::atomic<int> *>(
        ::mmap(nullptr, sizeof(std::atomic<int>), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    int total = 0;
    for (unsigned int round = 0; round < 20; ++round) {
        ASSERT_TRUE(log.StartLog(path));
        written = 0;
        EXPECT_TRUE(zvi::test::IsKilledWhileItCalls(
            [&](int i) {
                log.Write(L"line %d\n", i);
                written = i;
            },
            1, 5000 + 977 * round));
        total += written;
        std::string lines;
        for (int i = 1; i <= written; ++i)
            lines += "line " + std::to_string(i) + "\n";
        // One more line may have been written than was told, or a part of it where the system's pages meet.
        std::string const next = "line " + std::to_string(written + 1) + "\n";
        std::string const text = folder.Read("l.log");
        EXPECT_TRUE(text.starts_with(LogText(lines)) && LogText(lines + next).starts_with(text)) << "round " << round;
    }
    EXPECT_GT(total, 0);
#ifdef __linux__
    path = L"\\dev\\full";
    EXPECT_THROW(log.StartLog(path), CFileException);
    EXPECT_THROW(log.Write(L"x"), CFileException);
#endif
}

#endif

} // namespace zvi::lib::test
