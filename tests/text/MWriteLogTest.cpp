#include "zvi/text/MWriteLog.h"

#include "tests/TemporaryFolder.h"
#include "zvi/host/CFileException.h"
#include "zvi/host/ChildProcess.h"
#include "zvi/host/Environment.h"
#include "zvi/host/Paths.h"
#include "zvi/text/CAutoLogWrite.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>

namespace zvi::lib::test {

namespace {

/// The log's text with bare line feeds.
std::string LogText(zvi::test::TemporaryFolder const &folder, char const *name) {
    std::string text = folder.Read(name);
    for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos;)
        text.erase(at, 1);
    return text;
}

std::string Banner(std::string const &address) {
    std::string const rule(50, '-');
    return rule + "\n Log Information\n\n " + address + " for more details information.\n\n" + rule + "\n";
}

/// What a writer says on its output behind each line.
constexpr char kTold = '\1';
/// A program takes long to start under Wine.
constexpr int kKilledWriters = sizeof(wchar_t) == 2 ? 3 : 20;

class TimedLog : public MWriteLog {
public:
    using MWriteLog::GetTimeString;
};

} // namespace

TEST(MWriteLog, WritesItsLines) {
    zvi::test::TemporaryFolder const folder;
    MWriteLog log;
    EXPECT_EQ(MWriteLog::Instance(), &log);
    EXPECT_FALSE(log.Write(L"x"));
    EXPECT_FALSE(log.WriteMsg(L"a", L"b"));
    log.WriteLine(L"nowhere");
    CString path(folder.Path("l.log").c_str());
    MWriteLog::SetSiteAddress(L"www.example.org");
    ASSERT_TRUE(log.StartLog(path));
    MWriteLog::SetSiteAddress(L"");
    EXPECT_EQ(LogText(folder, "l.log"), Banner("www.example.org")) << "every write is flushed";
    EXPECT_TRUE(log.WriteMsg(L"A", L"100 %d"));
    EXPECT_TRUE(log.WriteWarning(L"A", L"B"));
    EXPECT_TRUE(log.WriteError(L"A", L""));
    EXPECT_TRUE(log.Write(L"%d%% ", 50));
    log.WriteLine(L"%d");
    std::string const lines = "[Message][A] : 100 %d\n[Warning][A] : B\n[Error][A] : \n50% %d\n";
    EXPECT_EQ(LogText(folder, "l.log"), Banner("www.example.org") + lines);
    ASSERT_TRUE(log.StartLog(path)) << "begins anew";
    log.EndLog();
    EXPECT_EQ(LogText(folder, "l.log"), Banner(""));
    EXPECT_FALSE(log.Write(L"x"));
    CString none((folder.Path("none") + L"\\x").c_str());
    EXPECT_FALSE(log.StartLog(none));
    log.EndLog();
}

TEST(MWriteLog, IsTheObjectMadeLast) {
    {
        MWriteLog first;
        {
            MWriteLog const second(first);
            EXPECT_EQ(MWriteLog::Instance(), &second);
        }
        EXPECT_EQ(MWriteLog::Instance(), nullptr);
    }
    TimedLog timed;
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0, end = 0;
    CString const text = timed.GetTimeString();
    EXPECT_EQ(std::swscanf(text, L"%d-%d-%d %d:%d:%d%n", &year, &month, &day, &hour, &minute, &second, &end), 6);
    EXPECT_EQ(end, text.GetLength());
    EXPECT_TRUE(year > 2020 && year < 3000 && month >= 1 && month <= 12 && day >= 1 && day <= 31) << text.GetString();
    EXPECT_TRUE(hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0);
}

TEST(CAutoLogWrite, NamesAFailedRun) {
    zvi::test::TemporaryFolder const folder;
    CString const path(folder.Path("x_Success_Success.log").c_str());
    { CAutoLogWrite const withoutLog(path); }
    EXPECT_TRUE(folder.Names().empty());
    MWriteLog log;
    {
        CAutoLogWrite run(path);
        log.WriteLine(L"done");
        run.WriteFile_Fail();
        EXPECT_FALSE(log.Write(L"x"));
        EXPECT_EQ(run.GetLogFile(), path);
    }
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"x_Fail_Fail.log"});
    EXPECT_EQ(LogText(folder, "x_Fail_Fail.log"), Banner("") + "done\n");
    {
        CAutoLogWrite run(path);
        run.WriteFile_Fail();
    }
    EXPECT_EQ(LogText(folder, "x_Fail_Fail.log"), Banner("") + "done\n") << "an earlier log is not lost";
    CAutoLogWrite plain(CString(folder.Path("plain.log").c_str()));
    plain.WriteFile_Fail();
    EXPECT_EQ(LogText(folder, "plain.log"), Banner(""));
}

/// What the next test runs in a process of its own: writes lines, and tells each on its output, until it is killed.
TEST(MWriteLog, DISABLED_WritesUntilItIsKilled) {
    MWriteLog log;
    CString path(L"l.log");
    ASSERT_TRUE(log.StartLog(path));
    for (int i = 1; log.Write(L"line %d\n", i) && std::putchar(kTold) != EOF && std::fflush(stdout) == 0; ++i) {
    }
}

TEST(MWriteLog, IsFollowedByOthersAndHoldsEveryLineThatAKilledProcessWrote) {
    zvi::test::TemporaryFolder const folder;
    host::SetEnvironmentPath(L"GTEST_TOTAL_SHARDS", L"1");
    host::SetEnvironmentPath(L"GTEST_SHARD_INDEX", L"0");
    for (int round = 1; round <= kKilledWriters; ++round) {
        host::ChildProcess writer;
        ASSERT_EQ(writer.Start({.program = host::ModulePath(),
                                .arguments = L"--gtest_also_run_disabled_tests --gtest_filter=MWriteLog.DISABLED_*",
                                .folder = folder.Path()}),
                  0u);
        int written = 0;
        auto const hear = [&] {
            char told[100];
            std::size_t const count = writer.Read(told, sizeof told);
            written += static_cast<int>(std::count(told, told + count, kTold));
            return count != 0;
        };
        while (written < 37 * round && hear()) {
        }
        std::string const followed = LogText(folder, "l.log");
        writer.Terminate(1);
        while (hear()) {
        }
        ASSERT_TRUE(writer.WaitForEnd(std::chrono::seconds(60)));
        std::string lines = Banner("");
        for (int i = 1; i <= written; ++i)
            lines += "line " + std::to_string(i) + "\n";
        std::string const text = LogText(folder, "l.log");
        // One more line may have been written than was told, or a part of it where the system's pages meet.
        std::string const next = "line " + std::to_string(written + 1) + "\n";
        EXPECT_TRUE(text.starts_with(lines) && (lines + next).starts_with(text)) << "round " << round;
        EXPECT_TRUE(text.starts_with(followed) && followed.size() > Banner("").size()) << "round " << round;
    }
}

#ifdef __linux__
TEST(MWriteLog, TellsThatTheDiskIsFull) {
    MWriteLog log;
    CString path(L"\\dev\\full");
    EXPECT_THROW(log.StartLog(path), CFileException);
    EXPECT_THROW(log.Write(L"x"), CFileException);
}
#endif

} // namespace zvi::lib::test
