#include "tests/FailingMemory.h"
#include "tests/TemporaryFolder.h"
#include "tests/diagnostics/ChildRuns.h"

#include "zvi/host/Timers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <thread>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace zvi::lib::test {

namespace {

using zvi::test::TemporaryFolder;

using Texts = std::vector<std::string>;

/// Documents of which only the address counts.
char places[2];
CDocument *const kDocument = reinterpret_cast<CDocument *>(&places[0]);
CDocument *const kOther = reinterpret_cast<CDocument *>(&places[1]);

/// Waits until no process holds a file that children hold with "hold".
void WaitUntilFree(std::filesystem::path const &file) {
#ifdef _WIN32
    while (!std::filesystem::remove(file, *std::make_unique<std::error_code>()))
        std::this_thread::yield();
#else
    int const lock = open(file.c_str(), O_RDWR | O_CREAT, 0600);
    EXPECT_EQ(flock(lock, LOCK_EX), 0);
    close(lock);
#endif
}

void WaitUntilThere(std::filesystem::path const &file) {
    while (!std::filesystem::exists(file))
        std::this_thread::yield();
}

/// Whether this process has a child, ended or not, that nobody has collected.
bool HasChildren() {
#ifdef _WIN32
    return false;
#else
    siginfo_t info{};
    return waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == 0;
#endif
}

} // namespace

TEST(MProcessMgr, TellsLinesAndTheExitCode) {
    struct Case {
        std::wstring arguments;
        Texts texts;
    };
    Case const cases[] = {
        {L"exit 3", {"!Exit:3"}},
        {L"bytes 610d0a620a63 exit 255", {"a\r", "b\r", "c\r", "!Exit:255"}},
        {L"bytes 3130250d3230250d0a", {"10%", "!Same:1020%\r", "!Exit:0"}},
        {L"bytes 61c3a90d", {"a??", "!Exit:0"}},
        {L"errors x bytes 790a", {"x\r", "y\r", "!Exit:0"}},
        {L"die", {"!Exit:137"}},
        {L"bytes 61 die", {"a\r", "!Exit:137"}},
        {L"input", {"0\r", "!Exit:0"}},
#ifndef _WIN32
        {L"files", {"files 0 1 2\r", "!Exit:0"}},
#endif
    };
#ifndef _WIN32
    int const open = dup(STDIN_FILENO); // which a child would inherit
#endif
    for (Case const &c : cases)
        EXPECT_EQ(AllOf(c.arguments), c.texts);
#ifndef _WIN32
    close(open);
#endif
    EXPECT_FALSE(HasChildren());
}

TEST(MProcessMgr, LosesNothingAndTellsNothingTwice) {
    Texts const texts = AllOf(L"lines 100000");
    ASSERT_EQ(texts.size(), 100001U);
    for (std::size_t i = 0; i < 100000; ++i)
        ASSERT_EQ(texts[i], std::to_string(i) + "\r");
    // Longer than the ring, in one piece, with a line before and an unended one behind.
    EXPECT_EQ(AllOf(L"bytes 610a flood 1000000 bytes 0d62"),
              (Texts{"a\r", std::string(1000000, 'x'), "!Same:" + std::string(999999, 'x') + "b\r", "!Exit:0"}));
}

TEST(MProcessMgr, TellsSoManyLinesAPass) {
    for (int const manyLines : {0, 1}) {
        Heard heard;
        ASSERT_EQ(RunChildOf(&heard, L"lines 1500", nullptr, manyLines), 0);
        for (std::size_t before = 0; heard.texts.size() < 1000; before = heard.texts.size()) {
            MProcessMgr::Instance()->WaitForOutput(20);
            Pass();
            // Once the child has ended all that is left is told.
            if (heard.hasEnded)
                break;
            EXPECT_LE(heard.texts.size() - before, manyLines != 0 ? 1000U : 100U);
        }
        PassUntil([&] { return heard.hasEnded; });
        EXPECT_EQ(heard.texts.size(), 1501U);
    }
}

TEST(MProcessMgr, RefusesThe101stChildAndAMissingProgram) {
    TemporaryFolder const folder;
    MProcessMgr *const manager = MProcessMgr::Instance();
    std::vector<std::unique_ptr<Heard>> heard;
    for (int i = 0; i < 100; ++i) {
        heard.push_back(std::make_unique<Heard>());
        ASSERT_EQ(RunChildOf(heard.back().get(), Arguments({"wait", folder.Native("go"), "lines", "3"})), 0);
    }
    Heard last;
    EXPECT_EQ(RunChildOf(&last, L"exit 0"), -4);
    EXPECT_EQ(last.IsAlive(), 0);
    EXPECT_EQ(heard[7]->IsAlive(), 1);
    folder.Write("go", "");
    PassUntil([&] { return std::all_of(heard.begin(), heard.end(), [](auto const &each) { return each->hasEnded; }); });
    for (auto const &each : heard)
        EXPECT_EQ(each->texts, (Texts{"0\r", "1\r", "2\r", "!Exit:0"}));
    EXPECT_FALSE(host::NextTimerDue()) << "the timer runs on";
    // A self-deleting communicator is gone, as its run would be.
    EXPECT_EQ(manager->Run(L"no\\such\\program", L"", L"", 0, 1, new Heard(1), 0, 0, nullptr), -2);
    EXPECT_EQ(manager->Run(nullptr, nullptr, nullptr, 0, 1, nullptr, 0, 0, nullptr), -2);
    EXPECT_FALSE(HasChildren());
}

TEST(MProcessMgr, StartsInTheFolderAndReportsAProgramThatCannotRun) {
    TemporaryFolder const folder;
    folder.Write("text", "not a program");
    for (std::wstring const &program : {ChildProgram(), folder.Path("text")}) {
        Heard heard;
        ASSERT_EQ(MProcessMgr::Instance()->Run(program.c_str(), L"folder", folder.Path().c_str(), 0, 1, &heard, 0, 0,
                                               nullptr),
                  0);
        PassUntil([&] { return heard.hasEnded; });
        bool const isText = program == folder.Path("text");
        EXPECT_EQ(heard.startError != 0, isText);
        EXPECT_EQ(heard.texts.front(),
                  isText ? "!Exit:0" : folder.Native("x").parent_path().filename().string() + "\r");
    }
}

TEST(MProcessMgr, StopsAChildThatWritesAndWhatItHasStarted) {
    TemporaryFolder const folder;
    auto const held = folder.Native("held");
    auto const ready = folder.Native("ready");
    Heard heard;
    ASSERT_EQ(RunChildOf(&heard, Arguments({"lines", "10", "start", "hold", held, "touch", ready, "hang", ";", "wait",
                                            ready, "flood", "10000000000000"})),
              0);
    EXPECT_EQ(heard.SendMsg(L"Stop"), 0);
    EXPECT_EQ(heard.SendMsg(L"!stop"), 0);
    EXPECT_EQ(heard.SendMsg(nullptr), 0);
    PassUntil([&] { return heard.texts.size() >= 10; });
    WaitUntilThere(ready);
    EXPECT_EQ(heard.IsAlive(), 1);
    heard.SendMsg(L"!Stop");
    PassUntil([&] { return heard.hasEnded; });
    WaitUntilFree(held);
    EXPECT_EQ(heard.texts.back(), "!Exit:77");
    EXPECT_EQ(heard.IsAlive(), 0);
    EXPECT_EQ(heard.IsAlive(), 0);
    EXPECT_EQ(heard.SendMsg(L"!Stop"), -1);
    EXPECT_FALSE(HasChildren());
}

TEST(MProcessMgr, EndsARunWithItsChild) {
    TemporaryFolder const folder;
    // A daemon keeps the pipe and is left alone.
    EXPECT_EQ(AllOf(Arguments({"daemon", "wait", folder.Native("go"), "touch", folder.Native("done"), ";", "bytes",
                               "61", "exit", "4"})),
              (Texts{"a\r", "!Exit:4"}));
    folder.Write("go", "");
    WaitUntilThere(folder.Native("done"));
    // A child that has closed its output is waited for, and no stop reaches it.
    Heard closed;
    auto const ready = folder.Native("ready");
    ASSERT_EQ(RunChildOf(&closed, Arguments({"bytes", "61", "close", "touch", ready, "wait", folder.Native("end"),
                                             "exit", "5"})),
              0);
    WaitUntilThere(ready);
    PassUntil([&] { return closed.texts.size() == 1; });
    closed.SendMsg(L"!Stop");
    Pass();
    EXPECT_EQ(closed.IsAlive(), 1);
    folder.Write("end", "");
    PassUntil([&] { return closed.hasEnded; });
    EXPECT_EQ(closed.texts, (Texts{"a\r", "!Exit:5"}));
    EXPECT_FALSE(HasChildren());
}

TEST(MProcessMgr, ClosesTheChildrenOfADocument) {
    TemporaryFolder const folder;
    bool isDeleted = false;
    struct Deleted : Heard {
        explicit Deleted(bool &told) : Heard(1), isTold(told) {}
        ~Deleted() override { isTold = true; }
        bool &isTold;
    };
    Heard other;
    Heard silent;
    Heard flooding;
    auto const held = folder.Native("held");
    ASSERT_EQ(RunChildOf(&other, Arguments({"wait", folder.Native("go"), "lines", "1"}), kOther), 0);
    ASSERT_EQ(RunChildOf(&silent, Arguments({"hold", held, "lines", "1", "hang"}), kDocument), 0);
    ASSERT_EQ(RunChildOf(&flooding, L"flood 10000000000000", kDocument), 0);
    ASSERT_EQ(RunChildOf(new Deleted(isDeleted), L"hang", kDocument), 0);
    PassUntil([&] { return silent.texts.size() == 1; });
    MProcessMgr::Instance()->OnCloseDocument(kDocument);
    EXPECT_TRUE(isDeleted);
    EXPECT_EQ(silent.SendMsg(L"!Stop"), -1);
    EXPECT_EQ(flooding.IsAlive(), 0);
    WaitUntilFree(held);
    folder.Write("go", "");
    PassUntil([&] { return other.hasEnded; });
    EXPECT_EQ(other.texts, (Texts{"0\r", "!Exit:0"}));
    EXPECT_EQ(silent.texts, Texts{"0\r"});
}

/// The memory of the application's thread runs short at each of its allocations in turn.
TEST(MProcessMgr, TellsAllInTheEndWhenMemoryRunsShort) {
    if (!FailingMemory::IsPossible())
        GTEST_SKIP() << "allocations cannot be made to fail here";
    for (Shortage const shortage : {Shortage::kOnce, Shortage::kLasting}) {
        bool hasFailed = true;
        for (long index = 0; hasFailed; ++index) {
            struct Counting : MProcessCommunicator {
                Counting() { SetSelfDelete(0); }
                void OnProcessMsg(wchar_t const *text) override { ++(*text == L'!' ? ends : lines); }
                int lines = 0;
                int ends = 0;
            } counting;
            int result = 0;
            std::wstring const program = ChildProgram();
            {
                FailingMemory const memory(index, shortage);
                result = MProcessMgr::Instance()->Run(program.c_str(), L"flood 5000 bytes 0d61620a lines 150", L"", 0,
                                                      1, &counting, 0, 0, nullptr);
                for (int pass = 0; pass < 3 && result == 0; ++pass) {
                    MProcessMgr::Instance()->WaitForOutput(20);
                    Pass();
                }
                hasFailed = memory.HasFailed();
            }
            ASSERT_TRUE(result == 0 || result == -3) << result;
            PassUntil([&] { return counting.IsAlive() == 0 && (result != 0 || counting.ends == 2); });
            ASSERT_EQ(counting.lines, result == 0 ? 151 : 0) << "allocation " << index;
        }
    }
}

/// Whatever a communicator does while it is told something.
TEST(MProcessMgr, StandsWhatIsDoneWithinAMessage) {
    auto *deleted = new Heard(1);
    int count = 0;
    deleted->onMessage = [&](std::string const &) {
        ++count;
        Pass();
        delete deleted;
    };
    Heard closing;
    closing.onMessage = [&](std::string const &) { MProcessMgr::Instance()->OnCloseDocument(kDocument); };
    // Takes the slot that the closed one leaves, in the middle of its batch, and runs again at its end.
    Heard starting;
    Heard next;
    starting.onMessage = [&](std::string const &text) {
        if (text == "0\r")
            MProcessMgr::Instance()->OnCloseDocument(kDocument);
        if (text == "!Exit:0" && starting.texts.size() == 51)
            RunChildOf(&starting, L"lines 1");
    };
    ASSERT_EQ(RunChildOf(deleted, L"lines 50"), 0);
    ASSERT_EQ(RunChildOf(&closing, L"lines 50 hang", kDocument), 0);
    ASSERT_EQ(RunChildOf(&starting, L"lines 50"), 0);
    ASSERT_EQ(RunChildOf(&next, L"lines 50"), 0);
    PassUntil([&] { return next.hasEnded && starting.texts.size() == 53; });
    EXPECT_EQ(count, 1);
    EXPECT_LE(closing.texts.size(), 1U);
    EXPECT_EQ(next.texts.size(), 51U);
    EXPECT_EQ(starting.texts.back(), "!Exit:0");
}

} // namespace zvi::lib::test
