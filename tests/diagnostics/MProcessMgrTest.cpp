#include "tests/FailingMemory.h"
#include "tests/TemporaryFolder.h"
#include "tests/diagnostics/ChildRuns.h"

#include "zvi/host/Timers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>

#ifndef _WIN32
#include <sys/wait.h>
#endif

namespace zvi::lib::test {

namespace {

/// By how much the load is heavier than usual; with ZVI_SOAK=1 the tests take minutes.
int const kLoad = std::getenv("ZVI_SOAK") ? 100 : 1;

/// A document, of which only the address counts.
char place;
CDocument *const kDocument = reinterpret_cast<CDocument *>(&place);

Texts Lines(int count) {
    Texts lines;
    for (int i = 0; i < count; ++i)
        lines.push_back(std::to_string(i) + "\r");
    lines.emplace_back("!Exit:0");
    return lines;
}

struct MProcessMgrTest : testing::Test {
    /// Waits until no child is left, ended or not; the worker of a closed one takes a moment.
    ~MProcessMgrTest() override {
        Pass();
        EXPECT_FALSE(host::NextTimerDue()) << "the timer runs on";
#ifndef _WIN32
        PassUntil(
            [] { return waitid(P_ALL, 0, std::make_unique<siginfo_t>().get(), WEXITED | WNOHANG | WNOWAIT) != 0; });
#endif
    }

    void Start(MProcessCommunicator &heard, std::wstring const &words, CDocument *document = nullptr,
               int manyLines = 0) const {
        ASSERT_EQ(RunChild(&heard, words, folder.Path(), document, manyLines), 0);
    }

    /// Waits until a child of these words, which writes nothing, has ended.
    void RunToTheEnd(std::wstring const &words) const {
        Heard silent;
        Start(silent, words);
        EXPECT_EQ(silent.ToTheEnd(), Texts{"!Exit:0"});
    }

    zvi::test::TemporaryFolder const folder;
};

} // namespace

/// In eight children of each kind at once.
TEST_F(MProcessMgrTest, TellsLinesAndHowTheChildEnds) {
    std::pair<std::wstring, Texts> const cases[] = {
        {L"", {"!Exit:0"}},
        {L"bytes 610d0a620a63 exit 255", {"a\r", "b\r", "c\r", "!Exit:255"}},
        {L"bytes 3130250d3230250d0a", {"10%", "!Same:1020%\r", "!Exit:0"}},
        {L"bytes 61c37fff80 exit 4", {"a\xC3\x7F\xFF\x80\r", "!Exit:4"}},
        {L"errors x bytes 790a", {"x\r", "y\r", "!Exit:0"}},
        {L"bytes 61 die", {"a\r", "!Exit:137"}},
        {L"input", {"none\r", "!Exit:0"}},
        {L"folder", {folder.Native("x").parent_path().filename().string() + "\r", "!Exit:0"}},
        {L"bytes 61 close exit 5", {"a\r", "!Exit:5"}},
        // What it has started keeps the pipe and is left alone.
        {L"start wait over touch done ; bytes 61 exit 4", {"a\r", "!Exit:4"}},
#ifndef _WIN32
        {L"files", {"0\r", "1\r", "2\r", "!Exit:0"}},
#endif
    };
    std::ofstream const open(folder.Native("open")); // which a child would inherit
    for (int round = 0; round < kLoad; ++round) {
        std::array<Heard, 8 * std::size(cases)> heard;
        for (std::size_t i = 0; i < heard.size(); ++i)
            Start(heard[i], cases[i / 8].first);
        for (std::size_t i = 0; i < heard.size(); ++i) {
            EXPECT_EQ(heard[i].ToTheEnd(), cases[i / 8].second);
            EXPECT_EQ(heard[i].startError, 0U);
        }
    }
    folder.Write("over", "");
    RunToTheEnd(L"wait done");
}

TEST_F(MProcessMgrTest, LosesNothingAndTellsSoManyLinesAPass) {
    for (auto const &[manyLines, most] : {std::pair(0, 100U), std::pair(1, 1000U)}) {
        Heard heard;
        Start(heard, L"lines " + std::to_wstring(10000 * kLoad), nullptr, manyLines);
        for (std::size_t before = 0; !heard.hasEnded; before = heard.texts.size()) {
            WaitAndPass();
            // Once the child has ended all that is left is told.
            ASSERT_TRUE(heard.hasEnded || heard.texts.size() - before <= most);
        }
        EXPECT_TRUE(heard.texts == Lines(10000 * kLoad));
    }
    Heard flooded;
    Start(flooded, L"lines 1 flood " + std::to_wstring(10000000 * kLoad) + L" bytes 0a62");
    EXPECT_EQ(flooded.ToTheEnd(), (Texts{"0\r", "x*" + std::to_string(10000000 * kLoad) + "\r", "b\r", "!Exit:0"}));
}

TEST_F(MProcessMgrTest, RefusesThe101stChild) {
    std::array<Heard, 100> heard;
    for (Heard &each : heard)
        Start(each, L"wait go lines " + std::to_wstring(100 * kLoad));
    Heard last;
    EXPECT_EQ(RunChild(&last, L""), -4);
    EXPECT_EQ(last.IsAlive(), 0);
    EXPECT_EQ(heard[7].IsAlive(), 1);
    folder.Write("go", "");
    for (Heard &each : heard)
        EXPECT_TRUE(each.ToTheEnd() == Lines(100 * kLoad));
}

TEST_F(MProcessMgrTest, RefusesAMissingProgramAndReportsOneThatCannotRun) {
    MProcessMgr *const manager = MProcessMgr::Instance();
    // A self-deleting communicator is gone, as its run would be.
    EXPECT_EQ(manager->Run(L"no\\such\\program", L"", L"", 0, 1, new Heard(1), 0, 0, nullptr), -2);
    EXPECT_EQ(manager->Run(nullptr, nullptr, nullptr, 0, 1, nullptr, 0, 0, nullptr), -2);
    folder.Write("text", "not a program");
    Heard heard;
    EXPECT_EQ(manager->Run(folder.Path("text").c_str(), L"", L"", 0, 1, &heard, 0, 0, nullptr), 0);
    EXPECT_EQ(heard.ToTheEnd(), Texts{"!Exit:0"});
    EXPECT_NE(heard.startError, 0U);
}

TEST_F(MProcessMgrTest, StopsAChildThatWritesAndWhatItHasStarted) {
    Heard heard;
    Heard closed; // its output, so that no stop reaches it
    Start(heard, L"lines 10 start hold held touch ready wait never ; wait ready flood 10000000000000");
    Start(closed, L"bytes 61 close wait end exit 5");
    PassUntil([&] { return heard.texts.size() >= 10 && closed.texts.size() == 1; });
    RunToTheEnd(L"wait ready");
    for (wchar_t const *const none : {L"Stop", L"!stop", static_cast<wchar_t const *>(nullptr)})
        EXPECT_EQ(heard.SendMsg(none), 0);
    EXPECT_EQ(heard.IsAlive(), 1);
    for (Heard *each : {&heard, &closed})
        EXPECT_EQ(each->SendMsg(L"!Stop"), 0);
    EXPECT_EQ(heard.ToTheEnd().back(), "!Exit:77");
    RunToTheEnd(L"hold held");
    EXPECT_EQ(heard.IsAlive(), 0);
    EXPECT_EQ(heard.SendMsg(L"!Stop"), -1);
    EXPECT_EQ(closed.IsAlive(), 1);
    folder.Write("end", "");
    EXPECT_EQ(closed.ToTheEnd(), (Texts{"a\r", "!Exit:5"}));
}

TEST_F(MProcessMgrTest, ClosesTheChildrenOfADocument) {
    for (int round = 0; round < kLoad; ++round) {
        Heard other, silent, flooding;
        auto *const deleted = new Heard(1);
        auto const life = std::make_shared<int>();
        deleted->onMessage = [life](std::string const &) {};
        Start(other, L"wait go lines 1");
        Start(silent, L"hold held lines 1 wait never", kDocument);
        Start(flooding, L"flood 10000000000000", kDocument);
        Start(*deleted, L"wait never", kDocument);
        PassUntil([&] { return silent.texts.size() == 1; });
        MProcessMgr::Instance()->OnCloseDocument(kDocument);
        EXPECT_EQ(life.use_count(), 1);
        EXPECT_EQ(silent.SendMsg(L"!Stop"), -1);
        EXPECT_EQ(flooding.IsAlive(), 0);
        RunToTheEnd(L"hold held");
        folder.Write("go", "");
        EXPECT_EQ(other.ToTheEnd(), Lines(1));
        EXPECT_EQ(silent.texts, Texts{"0\r"});
    }
}

/// Whatever a communicator does while it is told something.
TEST_F(MProcessMgrTest, StandsWhatIsDoneWithinAMessage) {
    for (int round = 0; round < kLoad; ++round) {
        auto *deleted = new Heard(1);
        int count = 0;
        deleted->onMessage = [&](std::string const &) {
            Pass();
            if (++count == 7)
                delete deleted;
        };
        Heard closing, starting, next;
        closing.onMessage = [&](std::string const &) { MProcessMgr::Instance()->OnCloseDocument(kDocument); };
        // Takes the slot that the closed one leaves, in the middle of its batch, and runs again at its end.
        starting.onMessage = [&](std::string const &text) {
            if (text == "0\r")
                MProcessMgr::Instance()->OnCloseDocument(kDocument);
            if (text == "!Exit:0" && starting.texts.size() == 51)
                Start(starting, L"lines 1");
        };
        Start(*deleted, L"lines 50");
        Start(closing, L"lines 50 wait never", kDocument);
        Start(starting, L"lines 50");
        Start(next, L"lines 50");
        PassUntil([&] { return count == 7 && next.hasEnded && starting.texts.size() == 53; });
        EXPECT_LE(closing.texts.size(), 1U);
        EXPECT_EQ(next.texts, Lines(50));
        EXPECT_EQ(starting.texts.back(), "!Exit:0");
    }
}

/// The memory of the application's thread runs short at each of its allocations in turn.
TEST_F(MProcessMgrTest, TellsAllInTheEndWhenMemoryRunsShort) {
    if (!FailingMemory::IsPossible())
        GTEST_SKIP() << "allocations cannot be made to fail here";
    struct Counting : MProcessCommunicator {
        Counting() { SetSelfDelete(0); }
        void OnProcessMsg(wchar_t const *text) override { ++(*text == L'!' ? ends : lines); }
        int lines = 0;
        int ends = 0;
    };
    std::wstring const words = L"flood 5000 bytes 0d61620a lines 150";
    for (Shortage const shortage : {Shortage::kOnce, Shortage::kLasting})
        for (long index = 0, goesOn = 1; goesOn; ++index) {
            Counting counting;
            int result = 0;
            {
                FailingMemory const memory(index, shortage);
                result = RunChild(&counting, words);
                for (int pass = 0; pass < 3 && result == 0; ++pass)
                    WaitAndPass();
                goesOn = memory.HasFailed();
            }
            ASSERT_TRUE(result == 0 || result == -3) << result;
            PassUntil([&] { return counting.IsAlive() == 0 && (result != 0 || counting.ends == 2); });
            ASSERT_EQ(counting.lines, result == 0 ? 151 : 0) << "allocation " << index;
        }
}

} // namespace zvi::lib::test
