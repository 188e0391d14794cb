#include "zvi/text/MWriteLog.h"

#include "tests/TemporaryFolder.h"
#include "zvi/host/CFileException.h"
#include "zvi/host/Files.h"
#include "zvi/text/CAutoLogWrite.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#ifndef _WIN32
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>
#endif

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

/// Share modes hold on Windows alone, where a log is for its writer as long as it is open.
bool const kCanBeReadMeanwhile = host::LineEnd().size() == 1;

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
    if (kCanBeReadMeanwhile) {
        EXPECT_EQ(LogText(folder, "l.log"), Banner("www.example.org")) << "every write is flushed";
    }
    EXPECT_TRUE(log.WriteMsg(L"A", L"100 %d"));
    EXPECT_TRUE(log.WriteWarning(L"A", L"B"));
    EXPECT_TRUE(log.WriteError(L"A", L""));
    EXPECT_TRUE(log.Write(L"%d%% ", 50));
    log.WriteLine(L"%d");
    std::string const lines = "[Message][A] : 100 %d\n[Warning][A] : B\n[Error][A] : \n50% %d\n";
    if (!kCanBeReadMeanwhile)
        log.EndLog();
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
    EXPECT_GT(year, 2020);
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

#ifndef _WIN32
TEST(MWriteLog, HoldsEveryLineThatAKilledProcessWrote) {
    zvi::test::TemporaryFolder const folder;
    CString path(folder.Path("l.log").c_str());
    for (int round = 1; round <= 20; ++round) {
        int told[2] = {};
        ASSERT_EQ(pipe(told), 0);
        pid_t const writer = fork();
        if (writer == 0) {
            MWriteLog log;
            char const byte = 'x';
            if (log.StartLog(path))
                for (int i = 1; log.Write(L"line %d\n", i) && write(told[1], &byte, 1) == 1; ++i) {
                }
            _exit(1);
        }
        close(told[1]);
        char byte = 0;
        int written = 0;
        while (written < 37 * round && read(told[0], &byte, 1) == 1)
            ++written;
        kill(writer, SIGKILL);
        int status = 0;
        waitpid(writer, &status, 0);
        while (read(told[0], &byte, 1) == 1)
            ++written;
        close(told[0]);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
        std::string lines;
        for (int i = 1; i <= written; ++i)
            lines += "line " + std::to_string(i) + "\n";
        std::string const text = LogText(folder, "l.log").substr(Banner("").size());
        // One more line may have been written than was told, or a part of it where the system's pages meet.
        std::string const next = "line " + std::to_string(written + 1) + "\n";
        EXPECT_TRUE(text.starts_with(lines) && (lines + next).starts_with(text)) << "round " << round;
    }
}

TEST(MWriteLog, TellsThatTheDiskIsFull) {
    MWriteLog log;
    CString path(L"\\dev\\full");
    EXPECT_THROW(log.StartLog(path), CFileException);
    EXPECT_THROW(log.Write(L"x"), CFileException);
}
#endif

} // namespace zvi::lib::test
